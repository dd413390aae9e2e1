import { h } from '../dom';
import { fixed } from '../numbers';
import { colourMap, type Lut } from './colour_maps';
import { ceilingOf, type Look } from './look';

function gradient(lut: Lut, reversed: boolean): string {
    const stops = Array.from({ length: 9 }, (_, i) => {
        const at = 3 * Math.round((255 * (reversed ? 8 - i : i)) / 8);
        return `rgb(${lut[at]},${lut[at + 1]},${lut[at + 2]})`;
    });
    return `linear-gradient(to right, ${stops.join(', ')})`;
}

/** The colours with their numbers: the negative side, the part below the threshold left open, the positive side. */
export function colourBar(look: Look, high: number): HTMLElement {
    const map = colourMap(look.colourMap);
    const ceiling = ceilingOf(look, high);
    const number = (value: number): HTMLElement => h('span', {}, fixed(value, 1));
    const bar = (lut: Lut, reversed: boolean): HTMLElement => {
        const strip = h('div', { class: 'colour-strip' });
        strip.style.background = gradient(lut, reversed);
        return strip;
    };
    const text = `Colours from z ${fixed(look.threshold, 1)} to ${fixed(ceiling, 1)} of either sign`;
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
