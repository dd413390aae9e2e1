import { type PredictorMatch, predictorMatch } from '../data/predictor_match';
import type { Component, Run } from '../data/run';
import { shownCourse } from '../data/shown_component';
import { colour } from '../theme';
import { axis, type ChartBox, legend, wholeAxis } from './chart';

interface Curve {
    label: string;
    values: number[];
}

function duration({ timeCourse, trSeconds }: Component): number {
    return (timeCourse.length - 1) * trSeconds;
}

/** A predictor scaled to the range of the time course. */
export function scaledPredictor({ predictor: { name, values } }: PredictorMatch): Curve {
    const low = Math.min(...values);
    const range = Math.max(...values) - low || 1;
    return {
        label: `${name} (scaled)`,
        values: values.map((value) => (value - low) / range),
    };
}

/** Time courses over seconds: the component, its best-matching predictor, and a second component. */
export function showTimeCourse(box: ChartBox, run: Run, component: Component, other: Component | null): void {
    const match = predictorMatch(run, component);
    const predictor = match && scaledPredictor(match);
    const seconds = Math.max(duration(component), other ? duration(other) : 0);
    const line = (curve: Curve, trSeconds: number, name: string, width: number, dash: number[] = []): object => ({
        label: curve.label,
        data: curve.values.map((y, t) => ({ x: Number((t * trSeconds).toFixed(3)), y })),
        borderColor: colour(name),
        borderWidth: width,
        borderDash: dash,
        pointRadius: 0,
        pointHitRadius: 6,
        tension: 0,
    });
    const text =
        `Time course of ${component.title} over ${duration(component).toFixed(0)} seconds`
        + (predictor ? `, with the predictor ${predictor.label}` : '')
        + (other ? `, and of ${other.title}` : '');
    box.show(text, () => ({
        type: 'line',
        data: {
            datasets: [
                line({ label: component.title, values: shownCourse(run, component) }, run.trSeconds, 'curve', 1.6),
                ...(other
                    ? [
                          line(
                              { label: other.title, values: shownCourse(run, other) },
                              other.trSeconds,
                              'curve-other',
                              1.4,
                          ),
                      ]
                    : []),
                ...(predictor ? [line(predictor, run.trSeconds, 'curve-predictor', 1.4, [5, 3])] : []),
            ] as never,
        },
        options: {
            parsing: false,
            normalized: true,
            interaction: { mode: 'index', intersect: false },
            scales: {
                x: { ...wholeAxis('Time (s)'), type: 'linear', min: 0, max: seconds },
                y: { ...axis('Rescaled to 0\u20131', 0.2), min: 0, max: 1 },
            },
            plugins: {
                legend: legend(predictor !== null || other !== null),
                tooltip: { callbacks: { title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x} s` } },
            },
        } as never,
    }));
}
