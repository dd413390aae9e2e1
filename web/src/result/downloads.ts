import { h } from '../../../report/src/dom';
import type { ResultFile } from '../engine/messages';

/** Hands a file to the browser to save. */
export function save(name: string, bytes: Uint8Array<ArrayBuffer>): void {
    const url = URL.createObjectURL(new Blob([bytes]));
    h('a', { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

const MAIN: { ending: string; title: string; name?: string }[] = [
    { ending: 'report.html', title: 'Report' },
    { ending: '_components.nii.gz', title: 'Maps (.nii.gz)' },
    { ending: '_metrics.tsv', title: 'Parameters (.tsv)' },
    { ending: '_timeseries.tsv', title: 'Time courses (.tsv)' },
];

/** Buttons for the main files of a result, for `everything`, and a list of all files. `stem`: name of the run. */
export function downloads(files: ResultFile[], stem: string, everything: HTMLElement): HTMLElement {
    const main = MAIN.flatMap(({ ending, title }) => {
        const file = files.find(({ path }) => path.endsWith(ending));
        const name = ending === 'report.html' ? `${stem}_report.html` : file?.path;
        return file ? [h('button', { class: 'button', onclick: () => save(name!, file.bytes) }, title)] : [];
    });
    const select = h(
        'select',
        {
            'aria-label': 'Save another file',
            onchange: () => {
                const file = files[Number(select.value)];
                save(file.path.replaceAll('/', '_'), file.bytes);
                select.value = '';
            },
        },
        h('option', { value: '' }, 'Other files …'),
        ...files.map(({ path }, i) => h('option', { value: i }, path)),
    );
    return h('div', { class: 'downloads' }, ...main, everything, select);
}
