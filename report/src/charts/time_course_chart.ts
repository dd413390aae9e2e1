import { isInverted, type PredictorMatch, predictorMatch } from '../data/predictor_match';
import type { Component, Run } from '../data/run';
import { shownCourse } from '../data/shown_component';
import { axis, type ChartBox } from './chart';
import { type TimeCurve, timeChart } from './time_chart';

interface Curve {
    label: string;
    values: number[];
}

function duration({ timeCourse, trSeconds }: Component): number {
    return (timeCourse.length - 1) * trSeconds;
}

/** A predictor scaled to the range of the time course, and inverted where the two are negatively correlated. */
export function scaledPredictor(match: PredictorMatch): Curve {
    const { name, values } = match.predictor;
    const low = Math.min(...values);
    const range = Math.max(...values) - low || 1;
    const scaled = values.map((value) => (value - low) / range);
    return isInverted(match)
        ? { label: `${name} (scaled, inverted)`, values: scaled.map((value) => 1 - value) }
        : { label: `${name} (scaled)`, values: scaled };
}

/** Time courses over seconds: the component, its best-matching predictor, and a second component. */
export function showTimeCourse(box: ChartBox, run: Run, component: Component, other: Component | null): void {
    const match = predictorMatch(run, component);
    const predictor = match && scaledPredictor(match);
    const curveOf = (of: Component, name: string, width: number): TimeCurve => ({
        label: of.title,
        values: shownCourse(run, of),
        trSeconds: of.trSeconds,
        colour: name,
        width,
    });
    const curves = [curveOf(component, 'curve', 1.6)];
    if (other) curves.push(curveOf(other, 'curve-other', 1.4));
    if (predictor) {
        const { trSeconds } = run;
        curves.push({ ...predictor, trSeconds, colour: 'curve-predictor', width: 1.4, dash: [5, 3] });
    }
    const text =
        `Time course of ${component.title} over ${duration(component).toFixed(0)} seconds`
        + (predictor ? `, with the predictor ${predictor.label}` : '')
        + (other ? `, and of ${other.title}` : '');
    const seconds = Math.max(duration(component), other ? duration(other) : 0);
    box.show(text, () => timeChart(curves, seconds, { ...axis('Rescaled to 0\u20131', 0.2), min: 0, max: 1 }));
}
