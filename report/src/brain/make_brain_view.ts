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

/**
 * Puts a view into the place that can draw at once, with the 2D canvas, and where the browser has WebGL2 calls back with
 * a NiiVue view when that is ready to take over. So there is never an empty box, and the page decides by itself.
 */
export function makeBrainView(run: Run, place: HTMLElement, better: (view: NiivueView) => void): BrainView {
    const view = new CanvasView(run);
    place.append(view.element);
    if (hasWebgl2()) {
        NiivueView.make(run, place).then(better, () => {
            webgl2 = false; // announced but not working, as on some remote desktops
        });
    }
    return view;
}
