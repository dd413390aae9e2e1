import type { Chart, Plugin } from 'chart.js';
import { colour } from '../theme';

/** Shades ranges of the horizontal axis in two turns, each with a label at its top. */
export function bandAreas(ranges: { from: number; to: number; label: string }[]): Plugin {
    return {
        id: 'bandAreas',
        beforeDatasetsDraw(chart: Chart): void {
            const { ctx, chartArea: area, scales } = chart;
            ctx.save();
            ctx.font = '600 11px system-ui, sans-serif';
            ctx.textAlign = 'center';
            ctx.textBaseline = 'top';
            ranges.forEach(({ from, to, label }, i) => {
                const left = Math.max(area.left, scales.x.getPixelForValue(from));
                const right = Math.min(area.right, scales.x.getPixelForValue(to));
                ctx.fillStyle = colour(i % 2 === 0 ? 'band-even' : 'band-odd');
                ctx.fillRect(left, area.top, right - left, area.bottom - area.top);
                ctx.fillStyle = colour('muted');
                ctx.fillText(label, (left + right) / 2, area.top + 3);
            });
            ctx.restore();
        },
    };
}
