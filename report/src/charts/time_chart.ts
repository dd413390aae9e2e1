import { colour } from '../theme';
import { legend, wholeAxis } from './chart';

/** A curve over time, one value per volume. */
export interface TimeCurve {
    label: string;
    values: (number | null)[]; // null: none
    trSeconds: number;
    colour: string; // of the style sheet
    width: number;
    dash?: number[];
}

const points = ({ values, trSeconds }: TimeCurve): { x: number; y: number }[] =>
    values.map((y, t) => ({ x: Number((t * trSeconds).toFixed(3)), y: y ?? NaN }));

/** The configuration of a chart of curves from 0 to `seconds`; `y` is its vertical axis. */
export function timeChart(curves: TimeCurve[], seconds: number, y: object): never {
    return {
        type: 'line',
        data: {
            datasets: curves.map((curve) => ({
                label: curve.label,
                data: points(curve),
                borderColor: colour(curve.colour),
                borderWidth: curve.width,
                borderDash: curve.dash ?? [],
                pointRadius: 0,
                pointHitRadius: 6,
                tension: 0,
            })),
        },
        options: {
            parsing: false,
            normalized: true,
            interaction: { mode: 'index', intersect: false },
            scales: { x: { ...wholeAxis('Time (s)'), type: 'linear', min: 0, max: seconds }, y },
            plugins: {
                legend: legend(curves.length > 1),
                tooltip: { callbacks: { title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x} s` } },
            },
        },
    } as never;
}
