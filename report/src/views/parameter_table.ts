import { FINGERPRINT, FINGERPRINT_START, METRICS } from '../data/metrics';
import { predictorMatch } from '../data/predictor_match';
import { type Component, isRepeated, type Run } from '../data/run';
import { h } from '../dom';
import { fixed, short, stabilityText } from '../numbers';

function cell(component: Component, metric: number): HTMLElement {
    const { column } = METRICS[metric];
    return h(
        'td',
        { 'data-metric': column, 'data-component': component.name, title: component.cells[metric] },
        short(component.values[metric]),
        column === LAG1 && component.values[metric] > 1 && h('sup', {}, '*'),
    );
}

const LAG1 = 'lag1_autocorr';

/** A remark for values of a definition that may exceed 1; null where all are at most 1. */
export function lag1Note(shown: Component[]): HTMLElement | null {
    const metric = METRICS.findIndex(({ column }) => column === LAG1);
    if (!shown.some(({ values }) => values[metric] > 1)) return null;
    return h(
        'p',
        { class: 'chart-note lag1-note' },
        '* May exceed 1: the definition sums one product more than the number that it divides by.',
    );
}

const RESCALED = ['skewness', 'kurtosis', 'spatial_entropy', 'temporal_entropy'];

/** A warning where components of two results are side by side; null for those of one. */
export function rescaledNote(run: Run, shown: Component[]): HTMLElement | null {
    if (shown.every((component) => run.components.includes(component))) return null;
    const names = METRICS.filter(({ column }) => RESCALED.includes(column)).map((metric) => metric.short.toLowerCase());
    return h(
        'p',
        { class: 'chart-note rescaled-note' },
        `Do not compare ${names.join(', ')} and the bands between the two results: they are rescaled across the `
            + 'components of each.',
    );
}

/**
 * The eleven values of the fingerprint in their order, one column per component; all digits in the tooltip of a value.
 */
export function fingerprintTable(run: Run, shown: Component[]): HTMLElement {
    return h(
        'table',
        { class: 'parameters' },
        h('caption', { class: 'visually-hidden' }, 'Values of the fingerprint'),
        h(
            'thead',
            {},
            h(
                'tr',
                {},
                h('th', { scope: 'col' }, 'Fingerprint'),
                ...shown.map((component) => h('th', { scope: 'col' }, component.title)),
            ),
        ),
        h(
            'tbody',
            {},
            ...FINGERPRINT.map((metric, i) =>
                h(
                    'tr',
                    {},
                    h('th', { scope: 'row', title: run.columns[metric.column]?.Description ?? '' }, metric.short),
                    ...shown.map((component) => cell(component, FINGERPRINT_START + i)),
                ),
            ),
        ),
    );
}

function repeatsText(component: Component): string {
    if (!isRepeated(component)) return 'not measured';
    const { facts, repeats } = component;
    return `Iq ${stabilityText(facts?.StabilityIndex ?? NaN)}, in ${facts?.StabilityRuns} of ${repeats} runs`;
}

/** How consistently a component is found from different starting points. */
function stabilityRow(shown: Component[]): HTMLElement {
    return h(
        'tr',
        {},
        h(
            'th',
            { scope: 'row', title: 'Himberg et al. 2004: 1 means that all runs found the same component' },
            'Stability',
        ),
        ...shown.map((component) => h('td', { 'data-metric': 'stability_iq' }, repeatsText(component))),
    );
}

/** Values that are not rescaled; only the rows that the result has. */
function measureRows(run: Run, shown: Component[]): HTMLElement[] {
    const row = (title: string, column: string, text: (component: Component) => string): HTMLElement | null =>
        column in run.columns
            ? h(
                  'tr',
                  {},
                  h('th', { scope: 'row', title: run.columns[column].Description ?? '' }, title),
                  ...shown.map((component) => h('td', { 'data-metric': column }, text(component))),
              )
            : null;
    return [
        row('Confound', 'confound_max_corr', ({ measures: { confound } }) =>
            confound ? `${confound.name}, |r| ${short(confound.strength)}` : 'none',
        ),
        row(
            'Explained variance',
            'explained_variance',
            ({ measures }) =>
                `${short(measures.explainedPercent)}${Number.isNaN(measures.explainedPercent) ? '' : ' %'}`,
        ),
        row('Skewness of the map', 'map_skewness', (component) =>
            short(component.measures.skewness * run.signs.of(component)),
        ),
        row('Kurtosis of the map', 'map_kurtosis', ({ measures }) => short(measures.kurtosis)),
    ].filter((made) => made !== null);
}

/** What the component matches, by name: the best predictor, the best region, and the spread of the time course. */
export function matchTable(run: Run, shown: Component[]): HTMLElement {
    const named = (
        component: Component,
        metric: number,
        name: string | null,
        number: number,
        r: number | null = null, // null: its sign is not known
    ): HTMLElement => {
        const strength = r === null ? `|r| ${short(component.values[metric])}` : `r ${fixed(r, 3)}`;
        const text = name === null ? 'none' : `${name} (no. ${component.cells[number]}), ${strength}`;
        return h('td', { 'data-metric': METRICS[metric].column, title: component.cells[metric] }, text);
    };
    const row = (title: string, metric: number, make: (component: Component) => HTMLElement): HTMLElement =>
        h(
            'tr',
            {},
            h('th', { scope: 'row', title: run.columns[METRICS[metric].column]?.Description ?? '' }, title),
            ...shown.map(make),
        );
    return h(
        'table',
        { class: 'parameters matches' },
        h('caption', { class: 'visually-hidden' }, 'Best matches'),
        h(
            'thead',
            {},
            h(
                'tr',
                {},
                h('th', { scope: 'col' }, 'Best match'),
                ...shown.map((component) => h('th', { scope: 'col' }, component.title)),
            ),
        ),
        h(
            'tbody',
            {},
            row('Design matrix', 0, (component) =>
                named(component, 0, component.predictor, 1, predictorMatch(run, component)?.r),
            ),
            row('Spatial template', 3, (component) => named(component, 3, component.region, 4)),
            ...measureRows(run, shown),
            row('RMS', 2, (component) => cell(component, 2)),
            ...(shown.some(isRepeated) ? [stabilityRow(shown)] : []),
        ),
    );
}
