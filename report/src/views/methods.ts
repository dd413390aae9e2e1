import type { Denoising } from '../data/denoising';
import { METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { h } from '../dom';
import { denoisingReferences, denoisingText } from './denoising_text';
import { methodsPanel } from './methods_panel';
import { methodsText } from './methods_text';
import { referencesOf } from './references';
import type { View } from './view';

/** The methods: a paragraph to paste, the references, the meaning of the parameters, how to read the images. */
export class Methods implements View {
    readonly element: HTMLElement;

    constructor(run: Run, denoising: Denoising | null) {
        const text = [methodsText(run), ...(denoising ? [denoisingText(denoising)] : [])].join(' ');
        const references = [...referencesOf(run), ...(denoising ? denoisingReferences(denoising) : [])];
        references.sort((a, b) => a.localeCompare(b, 'en'));
        this.element = h(
            'main',
            { class: 'view methods' },
            methodsPanel(text, references),
            h('section', { class: 'panel' }, h('h2', {}, 'The parameters'), parameterList(run)),
            h(
                'section',
                { class: 'panel' },
                h('h2', {}, 'How to read the images'),
                ...imageNotes().map((line) => h('p', {}, line)),
            ),
        );
    }
}

const MEASURES = ['explained_variance', 'map_skewness', 'map_kurtosis', 'confound_max_corr', 'confound_name'];

function parameterList(run: Run): HTMLElement {
    return h(
        'div',
        { class: 'table-scroll' },
        h(
            'table',
            { class: 'parameters parameter-list' },
            h(
                'thead',
                {},
                h(
                    'tr',
                    {},
                    ...['Column', 'Name in the plug-in', 'Meaning', 'Unit'].map((name) =>
                        h('th', { scope: 'col' }, name),
                    ),
                ),
            ),
            h(
                'tbody',
                {},
                ...[...METRICS.map(({ column }) => column), ...MEASURES.filter((column) => column in run.columns)].map(
                    (column) => {
                        const { LongName = '', Description = '', Units = '' } = run.columns[column] ?? {};
                        return h(
                            'tr',
                            {},
                            h('th', { scope: 'row' }, h('code', {}, column)),
                            h('td', {}, LongName),
                            h('td', {}, Description),
                            h('td', {}, Units),
                        );
                    },
                ),
            ),
        ),
    );
}

function imageNotes(): string[] {
    return [
        'Maps are stored in this file rounded to the decimals shown, so every value under the crosshair agrees with '
            + 'the map file to the last digit shown. The mean image is stored in 256 shades, for display only, and '
            + 'drawn darker than the strong ends of the colours.',
        'Colours: orange is positive and blue negative (ColorBrewer YlOrBr and Blues), a pair that readers with any '
            + 'common form of colour blindness can distinguish; viridis, cividis and inferno show the magnitude and '
            + 'increase evenly in lightness. Curves use blue, orange and green from the palette by Okabe and Ito.',
        'Brain views are drawn by NiiVue where the browser has WebGL2, otherwise on a 2D canvas; curves by Chart.js.',
        'Time courses are those of the mixing table, rescaled to 0\u20131. A predictor is scaled to the same range, '
            + 'and inverted where it is negatively correlated with the component.',
        'The sign of a component is arbitrary: map and time course may be inverted together.',
    ];
}
