import { colour } from '../theme';
import { axis, type ChartBox, legend, wholeAxis } from './chart';

/** Width of the axis to the left of the curves, so that what stands above and below them has the same time axis. */
export const LEFT_AXIS = 64;

export interface VolumeCurve {
    label: string;
    values: (number | null)[]; // per volume; null: none
    colour: string; // of the style sheet
}

/** Curves over time, one value per volume. */
export function showVolumes(box: ChartBox, curves: VolumeCurve[], title: string, trSeconds: number): void {
    const volumes = curves[0].values.length;
    const points = (values: (number | null)[]): { x: number; y: number }[] =>
        values.map((y, t) => ({ x: Number((t * trSeconds).toFixed(3)), y: y ?? NaN }));
    const seconds = volumes * trSeconds;
    box.show(`${title} over ${seconds.toFixed(0)} seconds: ${curves.map(({ label }) => label).join(', ')}`, () => ({
        type: 'line',
        data: {
            datasets: curves.map((curve) => ({
                label: curve.label,
                data: points(curve.values),
                borderColor: colour(curve.colour),
                borderWidth: 1.5,
                pointRadius: 0,
                pointHitRadius: 6,
                tension: 0,
            })) as never,
        },
        options: {
            parsing: false,
            normalized: true,
            interaction: { mode: 'index', intersect: false },
            scales: {
                x: { ...wholeAxis('Time (s)'), type: 'linear', min: 0, max: seconds },
                y: {
                    ...axis(title),
                    beginAtZero: true,
                    afterFit: (scale: { width: number }) => {
                        scale.width = LEFT_AXIS;
                    },
                },
            },
            plugins: {
                legend: legend(curves.length > 1),
                tooltip: { callbacks: { title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x} s` } },
            },
        } as never,
    }));
}
