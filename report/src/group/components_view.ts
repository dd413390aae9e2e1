import { defaultLook, type Look } from '../brain/look';
import { h } from '../dom';
import { plural, short } from '../numbers';
import type { View } from '../views/view';
import { ComponentCard } from './component_card';
import { facts } from './facts';
import type { Group } from './group';

/** What was analysed, and every group component as a card, drawn as it comes into view. */
export class ComponentsView implements View {
    readonly element: HTMLElement;
    private readonly cards: ComponentCard[];
    private readonly own: Look;

    constructor(
        group: Group,
        private readonly look: Look,
    ) {
        this.own = defaultLook(look.threshold);
        this.cards = group.components.map((component) => new ComponentCard(group, component));
        const drawer = new IntersectionObserver(
            (entries) => {
                for (const { target, isIntersecting } of entries) {
                    const card = this.cards.find(({ element }) => element === target)!;
                    if (isIntersecting && !card.element.dataset.drawn) void card.draw(this.own);
                }
            },
            { rootMargin: '200px' },
        );
        for (const { element } of this.cards) drawer.observe(element);
        group.signs.onChange(({ name }) => this.forget(this.cards.filter(({ component }) => component.name === name)));
        const where = group.grid.oriented
            ? 'Planes through the largest cluster, then axial slices from bottom to top'
            : 'Slices';
        this.element = h(
            'main',
            { class: 'view group-components' },
            facts(group),
            h('h2', {}, plural(group.components.length, 'group component')),
            h(
                'p',
                { class: 'gallery-legend' },
                `${where}. Coloured: clusters of at least ${plural(this.own.fewest, 'voxel')} with `
                    + `|z| > ${short(this.own.threshold)}. Amplitude: median over the runs.`,
            ),
            h('div', { class: 'cards' }, ...this.cards.map(({ element }) => element)),
        );
    }

    enter(): void {
        scrollTo(0, 0);
        if (this.own.radiological !== this.look.radiological) {
            this.own.radiological = this.look.radiological;
            this.forget(this.cards);
        }
        for (const card of this.cards.filter(({ element }) => !element.dataset.drawn)) {
            const { top, bottom } = card.element.getBoundingClientRect();
            if (bottom > 0 && top < innerHeight) void card.draw(this.own);
        }
    }

    /** Draws every card, for printing. */
    async drawAll(): Promise<void> {
        await Promise.all(
            this.cards.filter(({ element }) => !element.dataset.drawn).map((card) => card.draw(this.own)),
        );
    }

    // They are drawn again when the view is opened or they come into sight.
    private forget(cards: ComponentCard[]): void {
        for (const { element } of cards) delete element.dataset.drawn;
    }
}
