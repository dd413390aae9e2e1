import { METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { h } from '../dom';
import { methodsText } from './methods_text';
import { referencesOf } from './references';
import type { View } from './view';

/** How it was done: the paragraph to paste, the references, what the parameters mean, how the pictures are made. */
export class Methods implements View {
    readonly element: HTMLElement;

    constructor(run: Run) {
        const text = methodsText(run);
        const references = referencesOf(run);
        const paragraph = h('p', { class: 'methods-text', id: 'methods-text' }, text);
        const done = h('span', { class: 'label-message', role: 'status' });
        const copy = async (): Promise<void> => {
            try {
                await navigator.clipboard.writeText(`${text}\n\n${references.join('\n')}\n`);
                done.textContent = 'Copied with the references.';
            } catch {
                getSelection()?.selectAllChildren(paragraph); // not allowed: at least it is selected
                done.textContent = 'Selected: copy it with Ctrl+C.';
            }
        };
        this.element = h(
            'main',
            { class: 'view methods' },
            h(
                'section',
                { class: 'panel' },
                h('h2', {}, 'How it was done'),
                paragraph,
                h(
                    'p',
                    { class: 'methods-actions' },
                    h('button', { type: 'button', class: 'button', onclick: () => void copy() }, 'Copy'),
                    done,
                ),
                h('h3', {}, 'References'),
                h('ul', { class: 'references' }, ...references.map((reference) => h('li', {}, reference))),
            ),
            h('section', { class: 'panel' }, h('h2', {}, 'The sixteen parameters'), parameterList(run)),
            h(
                'section',
                { class: 'panel' },
                h('h2', {}, 'How the pictures are made'),
                ...pictures().map((line) => h('p', {}, line)),
            ),
        );
    }
}

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
                    ...['Column', 'Name in the plug-in', 'What it says', 'Unit'].map((name) =>
                        h('th', { scope: 'col' }, name),
                    ),
                ),
            ),
            h(
                'tbody',
                {},
                ...METRICS.map(({ column }) => {
                    const { LongName = '', Description = '', Units = '' } = run.columns[column] ?? {};
                    return h(
                        'tr',
                        {},
                        h('th', { scope: 'row' }, h('code', {}, column)),
                        h('td', {}, LongName),
                        h('td', {}, Description),
                        h('td', {}, Units),
                    );
                }),
            ),
        ),
    );
}

function pictures(): string[] {
    return [
        'Maps are kept in this file rounded to the decimals that are shown, so every value under the crosshair is the one '
            + 'of the map file to its last shown digit. The mean image is kept in 256 shades, for display only, and drawn '
            + 'darker than the strong ends of the colours.',
        'Colours: orange is positive and blue negative (ColorBrewer YlOrBr and Blues), a pair that readers with any common '
            + 'form of colour blindness tell apart; viridis, cividis and inferno show the magnitude and rise evenly in '
            + 'lightness. Curves use blue, orange and green of the palette by Okabe and Ito.',
        'Brain views are drawn by NiiVue where the browser offers WebGL2, otherwise on a 2D canvas; curves by Chart.js.',
        'Time courses are those of the mixing table, rescaled to 0\u20131. A predictor is scaled to the same range, and '
            + 'inverted where it is negatively correlated with the component.',
        'The sign of a component is arbitrary: map and time course may be turned around together.',
    ];
}
