import { defaultLook, type Look } from '../brain/look';
import type { Run } from '../data/run';
import { h } from '../dom';
import { labelBar } from '../labels/label_bar';
import type { Labels } from '../labels/labels';
import { plural, short } from '../numbers';
import { onThemeChange } from '../theme';
import { Card } from './card';
import { DrawQueue } from './draw_queue';
import { galleryControls } from './gallery_controls';
import { lookSwitch } from './look_switch';
import { defaultSort, type Selection, select, startsDescending } from './order';

/**
 * Every component as a card. All cards are in the page, so that find-in-page, the keyboard and the printer reach them;
 * their images, which are the expensive part, are drawn as they come into view.
 */
export class Gallery {
    readonly element: HTMLElement;
    /** Cards in the order shown, for stepping through their components. */
    shown: Card[];
    private readonly cards: Card[];
    private readonly grid = h('div', { class: 'cards' });
    private readonly count = h('span', { class: 'gallery-count', role: 'status' });
    private readonly selection: Selection;
    private readonly queue: DrawQueue;
    private readonly own: Look;
    private readonly sides: ReturnType<typeof lookSwitch>;
    private readonly legend = h('p', { class: 'gallery-legend' });

    /** `look`: the reader's settings. The cards follow only `radiological` and stay comparable in everything else. */
    constructor(
        private readonly run: Run,
        labels: Labels,
        private readonly look: Look,
        whenSeenDrawn: () => void,
    ) {
        const sort = defaultSort(run);
        this.selection = { sort, descending: startsDescending(sort), filters: [], label: 'all' };
        this.own = defaultLook(look.threshold);
        this.cards = run.components.map((component) => new Card(run, component, labels));
        this.shown = this.cards;
        this.queue = new DrawQueue((card) => card.draw(this.own), whenSeenDrawn);
        const observer = new IntersectionObserver(
            (entries) => {
                for (const { target, isIntersecting } of entries) {
                    const card = this.cards.find((candidate) => candidate.element === target)!;
                    if (isIntersecting) this.queue.inSight(card);
                    else this.queue.outOfSight(card);
                }
                this.queue.start();
            },
            { rootMargin: '200px' },
        );
        for (const card of this.cards) observer.observe(card.element);
        this.queue.later(this.cards);

        labels.onChange(() => {
            for (const card of this.cards) card.refreshLabel();
            if (this.selection.sort === 'label' || this.selection.label !== 'all') this.refresh(run, labels);
        });
        run.signs.onChange((component) => this.redraw(this.cards.filter((card) => card.component === component)));
        onThemeChange(() => this.cards.filter((card) => card.drawn).forEach((card) => card.recolour()));
        this.sides = lookSwitch(look, 'radiological', 'Radiological view', () => this.turn());
        this.sides.element.hidden = !run.grid.oriented;
        this.describe();
        this.element = h(
            'section',
            { class: 'gallery', 'aria-labelledby': 'gallery-title' },
            h('div', { class: 'gallery-head' }, h('h2', { id: 'gallery-title' }, 'Components'), labelBar(run, labels)),
            galleryControls(run, this.selection, this.count, () => this.refresh(run, labels), this.sides.element),
            this.legend,
            this.grid,
        );
        this.refresh(run, labels);
    }

    enter(): void {
        this.sides.refresh();
        this.turn();
    }

    /** Name of the component whose card has the keyboard focus. */
    get focused(): string | null {
        const card = this.shown.find(({ element }) => element.contains(document.activeElement));
        return card?.component.name ?? null;
    }

    focus(component: string | null): void {
        const card = this.shown.find((candidate) => candidate.component.name === component);
        card?.element.querySelector<HTMLElement>('.card-link')?.focus();
    }

    /** Resolves when every card that is in the page is drawn. */
    async drawAll(): Promise<void> {
        for (const card of this.shown) if (!card.drawn && card.hasPlace()) await card.draw(this.own);
        await Promise.all(this.shown.map((card) => card.drawing));
    }

    // Redraws the cards, those in view first.
    private turn(): void {
        const { fewest, radiological } = this.look;
        if (this.own.radiological === radiological && this.own.fewest === fewest) {
            this.queue.start(); // the cards of components flipped in another view
            return;
        }
        Object.assign(this.own, { fewest, radiological });
        this.describe();
        this.redraw(this.cards);
    }

    private redraw(cards: Card[]): void {
        for (const card of cards) {
            card.drawn = false;
            card.refreshSign();
            if (card.isInSight()) this.queue.inSight(card);
        }
        this.queue.start();
    }

    private describe(): void {
        const { oriented } = this.run.grid;
        const left = this.own.radiological ? 'on the right' : 'on the left';
        this.legend.textContent =
            `${oriented ? 'Planes through the largest cluster, then axial slices from bottom to top' : 'Slices'}. `
            + `Coloured: clusters of at least ${plural(this.own.fewest, 'voxel')} with `
            + `|z| > ${short(this.own.threshold)}${oriented ? `; left is ${left}` : ''}.`;
    }

    private refresh(run: Run, labels: Labels): void {
        const { sort } = this.selection;
        this.shown = select(run, this.selection, labels).map((component) => this.cards[component.index]);
        for (const card of this.cards) card.showValue(sort);
        this.grid.replaceChildren(...this.shown.map((card) => card.element));
        const all = this.cards.length;
        this.count.textContent =
            this.shown.length === all
                ? plural(all, 'component')
                : `${this.shown.length} of ${plural(all, 'component')}`;
        if (this.shown.length === 0) this.grid.append(h('p', { class: 'empty' }, 'No component passes these filters.'));
    }
}
