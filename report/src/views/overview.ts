import type { Look } from '../brain/look';
import type { Run } from '../data/run';
import { h } from '../dom';
import { advances } from '../labels/advance';
import { LABELS, type Label, type Labels } from '../labels/labels';
import { Gallery } from './gallery';
import { summary } from './summary';
import type { View } from './view';

const NARROW = 1024; // pixels; up to here the summary is closed at first, so that cards are on the first screen

/** The opening view: the summary of the run, and all components below it. */
export class Overview implements View {
    readonly element: HTMLElement;
    readonly gallery: Gallery;
    private readonly summary: ReturnType<typeof summary>;
    private collapses = true; // at the first scroll
    private scroll = 0;
    private focused: Element | null = null;

    constructor(
        run: Run,
        private readonly labels: Labels,
        look: Look,
        whenDrawn: () => void,
    ) {
        this.gallery = new Gallery(run, labels, look, whenDrawn);
        this.summary = summary(run);
        this.summary.setOpen(innerWidth > NARROW);
        this.element = h('main', { class: 'view overview' }, this.summary.element, this.gallery.element);
        addEventListener('scroll', () => this.scrolled(), { passive: true });
    }

    // The summary has been read when the reader scrolls for the first time; the cards stay where they are.
    private scrolled(): void {
        if (!this.collapses || scrollY === 0 || !this.element.isConnected) return;
        this.collapses = false;
        if (!this.summary.isOpen()) return;
        const { top } = this.gallery.element.getBoundingClientRect();
        this.summary.setOpen(false);
        scrollBy(0, this.gallery.element.getBoundingClientRect().top - top);
    }

    enter(): void {
        this.gallery.enter();
        scrollTo(0, this.scroll); // back to the card that the reader came from
        if (this.focused instanceof HTMLElement) this.focused.focus({ preventScroll: true });
    }

    key(event: KeyboardEvent): boolean {
        const label = LABELS.find(({ key }) => key === event.key.toLowerCase());
        if (event.key.toLowerCase() === 'z') this.gallery.focus(this.labels.undo());
        else if (label) return this.label(label.label);
        else return false;
        return true;
    }

    // The card with the focus.
    private label(label: Label): boolean {
        const name = this.gallery.focused;
        if (name === null) return false;
        const next = this.labels.nextWithout(
            this.gallery.shown.map(({ component }) => component.name),
            name,
        );
        this.labels.setLabel(name, label);
        this.gallery.focus(advances() && next !== null ? next : name);
        return true;
    }

    leave(): void {
        this.scroll = scrollY;
        this.focused = this.element.contains(document.activeElement) ? document.activeElement : null;
    }
}
