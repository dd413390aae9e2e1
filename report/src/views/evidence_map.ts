import { gradient } from '../brain/colour_bar';
import { colourMap, type Lut } from '../brain/colour_maps';
import type { Look } from '../brain/look';
import { drawSliceRow } from '../brain/slice_row';
import { type ComponentMap, NO_VALUE } from '../data/component_map';
import type { Run } from '../data/run';
import { h } from '../dom';
import { fixed } from '../numbers';

/** The smallest value of a map; 0 if none is negative. */
export function lowestOf({ values, scale }: ComponentMap): number {
    const lowest = values.reduce((least, value) => (value !== NO_VALUE && value < least ? value : least), 0);
    return lowest * scale;
}

/** The colours from 0 to the ceiling of the look; those of negative values only where the map has some. */
function evidenceBar(map: ComponentMap, look: Look): HTMLElement {
    const { positive, negative } = colourMap(look.colourMap);
    const top = look.ceiling ?? map.high;
    const strip = (lut: Lut, reversed: boolean): HTMLElement => {
        const element = h('span', { class: 'colour-strip' });
        element.style.background = gradient(lut, reversed);
        return element;
    };
    const ends = (lowestOf(map) < 0 ? [-top, 0, top] : [0, top]).map((value) => h('span', {}, fixed(value, 0)));
    const below = ends.length === 3 ? [ends[0], strip(negative, true)] : [];
    return h('span', { class: 'colour-bar' }, ...below, ends.at(-2), strip(positive, false), ends.at(-1));
}

/** A map of the evidence with its colour scale, drawn in the width that it gets. */
export function evidenceMap(run: Run, title: string, map: ComponentMap, look: Look): HTMLElement {
    const canvas = h('canvas', { class: 'evidence-map', role: 'img', 'aria-label': title });
    new ResizeObserver(() => {
        const width = Math.round(canvas.clientWidth * Math.min(2, window.devicePixelRatio || 1));
        if (width === 0 || width === canvas.width) return;
        canvas.width = width;
        drawSliceRow(canvas, run, map, look);
    }).observe(canvas);
    return h(
        'figure',
        { class: 'evidence' },
        h('figcaption', { class: 'evidence-caption' }, title, evidenceBar(map, look)),
        canvas,
    );
}
