import type { Chart, Plugin } from 'chart.js';
import { colour } from '../theme';

/** A range of the horizontal axis to be shaded, with a label at its top. */
export interface Area {
    from: number;
    to: number;
    label: string;
    beside?: boolean; // the label goes to the right of the area, which is too narrow for it
}

const areasOf = new WeakMap<HTMLCanvasElement, Area[]>();

export function setAreas(canvas: HTMLCanvasElement, areas: Area[]): void {
    areasOf.set(canvas, areas);
}

/** Shades the areas of a chart in two alternating tones. */
export const BAND_AREAS: Plugin = {
    id: 'bandAreas',
    beforeDatasetsDraw(chart: Chart): void {
        const { ctx, chartArea: box, scales } = chart;
        ctx.save();
        ctx.font = '600 11px system-ui, sans-serif';
        ctx.textBaseline = 'top';
        (areasOf.get(chart.canvas) ?? []).forEach(({ from, to, label, beside }, i) => {
            const left = Math.max(box.left, scales.x.getPixelForValue(from));
            const right = Math.min(box.right, scales.x.getPixelForValue(to));
            ctx.fillStyle = colour(i % 2 === 0 ? 'band-even' : 'band-odd');
            ctx.fillRect(left, box.top, right - left, box.bottom - box.top);
            ctx.fillStyle = colour('muted');
            ctx.textAlign = beside ? 'left' : 'center';
            ctx.fillText(label, beside ? right + 4 : (left + right) / 2, box.top + 3);
        });
        ctx.restore();
    },
};
