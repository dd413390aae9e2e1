import type { Run } from '../data/run';
import type { BrainView } from './brain_view';
import { CanvasView } from './canvas_view';
import { NiivueView } from './niivue_view';

let webgl2: boolean | null = null;

function hasWebgl2(): boolean {
    if (webgl2 === null) {
        const context = document.createElement('canvas').getContext('webgl2');
        webgl2 = context !== null;
        context?.getExtension('WEBGL_lose_context')?.loseContext();
    }
    return webgl2;
}

/** The best view that this browser can draw, put into the place. */
export async function makeBrainView(run: Run, place: HTMLElement): Promise<BrainView> {
    if (hasWebgl2()) {
        try {
            return await NiivueView.make(run, place);
        } catch {
            webgl2 = false; // announced but not working, as on some remote desktops
        }
    }
    const view = new CanvasView(run);
    place.append(view.element);
    return view;
}
