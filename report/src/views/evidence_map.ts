import { gradient } from '../brain/colour_bar';
import { colourMap } from '../brain/colour_maps';
import type { Look } from '../brain/look';
import { drawSliceRow } from '../brain/slice_row';
import type { ComponentMap } from '../data/component_map';
import type { Run } from '../data/run';
import { h } from '../dom';
import { fixed } from '../numbers';

/** A map of the evidence with its colour scale, drawn in the width that it gets. */
export function evidenceMap(run: Run, title: string, map: ComponentMap, look: Look): HTMLElement {
    const canvas = h('canvas', { class: 'evidence-map', role: 'img', 'aria-label': title });
    new ResizeObserver(() => {
        const width = Math.round(canvas.clientWidth * Math.min(2, window.devicePixelRatio || 1));
        if (width === 0 || width === canvas.width) return;
        canvas.width = width;
        drawSliceRow(canvas, run, map, look);
    }).observe(canvas);
    const strip = h('span', { class: 'colour-strip' });
    strip.style.background = gradient(colourMap(look.colourMap).positive);
    const top = look.ceiling ?? map.high;
    return h(
        'figure',
        { class: 'evidence' },
        h(
            'figcaption',
            { class: 'evidence-caption' },
            title,
            h('span', { class: 'colour-bar' }, h('span', {}, '0'), strip, h('span', {}, fixed(top, 0))),
        ),
        canvas,
    );
}
