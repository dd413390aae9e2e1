import { h } from '../dom';
import { fixed } from '../numbers';
import { colourMap, type Lut } from './colour_maps';
import { ceilingOf, type Look } from './look';

/** The colours of a scale as a background, the weak end first unless reversed. */
export function gradient(lut: Lut, reversed = false): string {
    const stops = Array.from({ length: 9 }, (_, i) => {
        const at = 3 * Math.round((255 * (reversed ? 8 - i : i)) / 8);
        return `rgb(${lut[at]},${lut[at + 1]},${lut[at + 2]})`;
    });
    return `linear-gradient(to right, ${stops.join(', ')})`;
}

/** The colour scale with its limits: the negative side, a gap below the threshold, the positive side. */
export function colourBar(look: Look, high: number): HTMLElement {
    const map = colourMap(look.colourMap);
    const ceiling = ceilingOf(look, high);
    const number = (value: number): HTMLElement => h('span', {}, fixed(value, 1));
    const bar = (lut: Lut, reversed: boolean): HTMLElement => {
        const strip = h('div', { class: 'colour-strip' });
        strip.style.background = gradient(lut, reversed);
        return strip;
    };
    const text = `Colour scale from |z| ${fixed(look.threshold, 1)} to ${fixed(ceiling, 1)}`;
    return h(
        'div',
        { class: 'colour-bar', role: 'img', 'aria-label': text },
        number(-ceiling),
        bar(map.negative, true),
        number(-look.threshold),
        h('span', { class: 'colour-unit' }, 'z'),
        number(look.threshold),
        bar(map.positive, false),
        number(ceiling),
    );
}
