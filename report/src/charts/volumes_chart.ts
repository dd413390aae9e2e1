import { axis, type ChartBox } from './chart';
import { timeChart } from './time_chart';

/** Width of the axis to the left of the curves, so that what stands above and below them has the same time axis. */
export const LEFT_AXIS = 64;

export interface VolumeCurve {
    label: string;
    values: (number | null)[]; // per volume; null: none
    colour: string; // of the style sheet
}

/** Curves over time, one value per volume. */
export function showVolumes(box: ChartBox, curves: VolumeCurve[], title: string, trSeconds: number): void {
    const seconds = curves[0].values.length * trSeconds;
    const vertical = {
        ...axis(title),
        beginAtZero: true,
        afterFit: (scale: { width: number }) => {
            scale.width = LEFT_AXIS;
        },
    };
    box.show(`${title} over ${seconds.toFixed(0)} seconds: ${curves.map(({ label }) => label).join(', ')}`, () =>
        timeChart(
            curves.map((curve) => ({ ...curve, trSeconds, width: 1.5 })),
            seconds,
            vertical,
        ),
    );
}
