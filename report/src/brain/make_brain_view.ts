import type { Brain } from '../data/brain';
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
 * Adds a view to `place` that draws immediately with the 2D canvas. Where the browser has WebGL2, calls back with a
 * NiiVue view once that is ready to take over. The reader never sees an empty box and has nothing to choose.
 */
export function makeBrainView(brain: Brain, place: HTMLElement, better: (view: NiivueView) => void): BrainView {
    const view = new CanvasView(brain);
    place.append(view.element);
    if (hasWebgl2()) {
        NiivueView.make(brain, place).then(better, () => {
            webgl2 = false; // reported as available but not working, as on some remote desktops
        });
    }
    return view;
}
