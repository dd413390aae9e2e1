import type { Look } from '../brain/look';
import type { Run } from '../data/run';
import { h } from '../dom';
import type { Labels } from '../labels/labels';
import { Gallery } from './gallery';
import { summary } from './summary';
import type { View } from './view';

/** The opening view: the summary of the run, and all components below it. */
export class Overview implements View {
    readonly element: HTMLElement;
    readonly gallery: Gallery;
    private scroll = 0;
    private focused: Element | null = null;

    constructor(run: Run, labels: Labels, look: Look, whenDrawn: () => void) {
        this.gallery = new Gallery(run, labels, look, whenDrawn);
        this.element = h('main', { class: 'view overview' }, summary(run), this.gallery.element);
    }

    enter(): void {
        this.gallery.enter();
        scrollTo(0, this.scroll); // back to the card that the reader came from
        if (this.focused instanceof HTMLElement) this.focused.focus({ preventScroll: true });
    }

    leave(): void {
        this.scroll = scrollY;
        this.focused = this.element.contains(document.activeElement) ? document.activeElement : null;
    }
}
