import { colour } from '../theme';
import type { Component, Predictor, Run } from '../data/run';
import { axis, ChartBox, legend } from './chart';

// Only its sign is used, to turn the predictor the way the component runs.
function covariance(x: number[], y: number[]): number {
    const mean = (values: number[]): number => values.reduce((sum, value) => sum + value, 0) / values.length;
    const mx = mean(x);
    const my = mean(y);
    return x.reduce((sum, value, t) => sum + (value - mx) * (y[t] - my), 0);
}

interface Curve {
    label: string;
    values: number[];
}

/** The best-matching predictor brought to the range of the time course; upside down where they run against each other. */
export function matchedPredictor(run: Run, component: Component): Curve | null {
    const predictor: Predictor | undefined = run.predictors[component.values[1] - 1];
    if (!predictor || !component.predictor) return null;
    const low = Math.min(...predictor.values);
    const range = Math.max(...predictor.values) - low || 1;
    const inverted = covariance(component.timeCourse, predictor.values) < 0;
    return {
        label: `${component.predictor}${inverted ? ', upside down' : ''} (scaled)`,
        values: predictor.values.map((value) => (inverted ? 1 - (value - low) / range : (value - low) / range)),
    };
}

/** Time courses over seconds: the component, the predictor that matches it best, a second component. */
export function showTimeCourse(box: ChartBox, run: Run, component: Component, other: Component | null): void {
    const points = (values: number[]): { x: number; y: number }[] =>
        values.map((y, t) => ({ x: Number((t * run.trSeconds).toFixed(3)), y }));
    const predictor = matchedPredictor(run, component);
    const seconds = (component.timeCourse.length - 1) * run.trSeconds;
    const line = (curve: Curve, name: string, width: number, dash: number[] = []): object => ({
        label: curve.label, data: points(curve.values), borderColor: colour(name), borderWidth: width, borderDash: dash,
        pointRadius: 0, pointHitRadius: 6, tension: 0,
    });
    const text = `Time course of ${component.title} over ${seconds.toFixed(0)} seconds`
        + (predictor ? `, with the predictor ${predictor.label}` : '') + (other ? `, and of ${other.title}` : '');
    box.show(text, () => ({
        type: 'line',
        data: {
            datasets: [
                line({ label: component.title, values: component.timeCourse }, 'curve', 1.6),
                ...(other ? [line({ label: other.title, values: other.timeCourse }, 'curve-other', 1.4)] : []),
                ...(predictor ? [line(predictor, 'curve-predictor', 1.4, [5, 3])] : []),
            ] as never,
        },
        options: {
            parsing: false,
            normalized: true,
            interaction: { mode: 'index', intersect: false },
            scales: {
                x: { ...axis('Time (s)'), type: 'linear', min: 0, max: seconds },
                y: { ...axis('Rescaled to 0\u20131', 0.2), min: 0, max: 1 },
            },
            plugins: {
                legend: legend(predictor !== null || other !== null),
                tooltip: { callbacks: { title: (items: { parsed: { x: number } }[]) => `${items[0].parsed.x} s` } },
            },
        } as never,
    }));
}
