import { cardAspect, drawCard } from '../brain/card_picture';
import type { Look } from '../brain/look';
import { shownMap } from '../data/shown_component';
import { h } from '../dom';
import { fixed, plural, stabilityText } from '../numbers';
import { amplitudeText } from './amplitude_text';
import type { Group, GroupComponent } from './group';

/** One group component: its map, its stability, its amplitudes in a line. */
export class ComponentCard {
    readonly element: HTMLElement;
    private readonly picture = h('canvas', { class: 'card-mosaic', role: 'img' });

    constructor(
        private readonly group: Group,
        readonly component: GroupComponent,
    ) {
        const { name, title, stability, outlying } = component;
        const outliers = outlying.filter(Boolean).length;
        this.picture.style.aspectRatio = String(cardAspect(group));
        this.picture.setAttribute('aria-label', `Map of ${title}`);
        this.element = h(
            'article',
            { class: 'card', 'data-component': name },
            h(
                'header',
                { class: 'card-head' },
                h('h3', {}, h('a', { href: `#/component/${name}`, class: 'card-link' }, title)),
                h('span', { class: 'card-name' }, name),
            ),
            this.picture,
            h(
                'footer',
                { class: 'card-foot' },
                !Number.isNaN(stability)
                    && h(
                        'span',
                        { title: 'Stability index Iq over the repeats' },
                        `stability ${stabilityText(stability)}`,
                    ),
                h('span', { title: 'Median over the runs' }, `amplitude ${amplitudeText(group, component.median)}`),
                outliers > 0 && h('span', { class: 'card-outliers' }, `\u25c6 ${plural(outliers, 'outlying run')}`),
            ),
        );
    }

    async draw(look: Look): Promise<void> {
        const map = await shownMap(this.group, this.component);
        const { picture } = this;
        if (picture.clientWidth === 0) return; // the reader has moved to another view
        const ratio = Math.min(2, window.devicePixelRatio || 1);
        picture.width = Math.round(picture.clientWidth * ratio);
        picture.height = Math.round(picture.clientHeight * ratio);
        drawCard(picture, this.group, map, look);
        const ends = [this.component.lowest, this.component.highest].map(
            (end) => end * this.group.signs.of(this.component),
        );
        ends.sort((a, b) => a - b);
        picture.setAttribute(
            'aria-label',
            `Map of ${this.component.title}; z from ${fixed(ends[0], 1)} to ${fixed(ends[1], 1)}`,
        );
        this.element.dataset.drawn = 'true';
    }
}
