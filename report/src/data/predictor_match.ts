import type { Component, Predictor, Run } from './run';

/** The predictor that best matches a component's time course. */
export interface PredictorMatch {
    predictor: Predictor;
    r: number; // with the sign that the component is shown with
}

// Not divided by the number of volumes: only its sign is used.
function covariance(x: number[], y: number[]): number {
    const mean = (values: number[]): number => values.reduce((sum, value) => sum + value, 0) / values.length;
    const mx = mean(x);
    const my = mean(y);
    return x.reduce((sum, value, t) => sum + (value - mx) * (y[t] - my), 0);
}

export function predictorMatch(run: Run, component: Component): PredictorMatch | null {
    const [strength, number] = component.values;
    const predictor = run.predictors[number - 1];
    if (!predictor || !component.predictor || component.otherDesign) return null;
    const negative = covariance(component.timeCourse, predictor.values) < 0;
    return { predictor, r: (negative ? -strength : strength) * run.signs.of(component) };
}

const WEAK = 0.3; // |r|; the two share less than a tenth of their variance

export function isWeak(match: PredictorMatch): boolean {
    return !(Math.abs(match.r) >= WEAK);
}

/** Whether the predictor is drawn upside down, so that the two curves can be compared. */
export function isInverted(match: PredictorMatch): boolean {
    return match.r < 0;
}
