import type { Run } from '../data/run';
import { h } from '../dom';
import { plural } from '../numbers';
import { LABELS, type Labels } from './labels';
import { labelsTable, readLabelsTable } from './labels_table';

function download(name: string, text: string): void {
    const url = URL.createObjectURL(new Blob([text], { type: 'text/tab-separated-values' }));
    h('a', { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 1000);
}

/** The number of components per label, and the export and import of labels. */
export function labelBar(run: Run, labels: Labels): HTMLElement {
    const components = run.components.map((component) => component.name);
    const counts = h('span', { class: 'label-counts' });
    const message = h('span', { class: 'label-message', role: 'status' });
    const refresh = (): void => {
        counts.replaceChildren(
            h('span', { class: 'label-progress' }, labels.progress),
            ...LABELS.map(({ label, sign, title }) =>
                h('span', { class: `chip chip-${label}` }, `${sign} ${labels.count(label)} ${title.toLowerCase()}`),
            ),
        );
    };
    const read = async (file: File): Promise<void> => {
        try {
            const entries = readLabelsTable(await file.text(), components);
            const changed = labels.change(entries);
            message.textContent = `${plural(entries.length, 'component')} read from ${file.name}, ${changed} changed.`;
        } catch (error) {
            message.textContent = (error as Error).message;
        }
    };
    const picker = h('input', {
        type: 'file',
        accept: '.tsv,.txt',
        class: 'visually-hidden',
        tabindex: -1,
        'aria-label': 'Labels file',
        onchange: () => {
            const file = picker.files?.[0];
            picker.value = ''; // so that the same file can be chosen again
            if (file) void read(file);
        },
    });
    const name = `${run.name}_desc-ICA_labels.tsv`;
    labels.onChange(refresh);
    refresh();
    return h(
        'div',
        { class: 'label-bar' },
        counts,
        h(
            'button',
            {
                type: 'button',
                class: 'button',
                title: `Save ${name}`,
                'data-action': 'export-labels',
                onclick: () => download(name, labelsTable(components, labels)),
            },
            'Export labels',
        ),
        h(
            'button',
            { type: 'button', class: 'button', title: 'Read a labels file', onclick: () => picker.click() },
            'Import labels',
        ),
        picker,
        message,
        !labels.kept
            && h(
                'span',
                { class: 'label-message' },
                'This browser stores no data for local files: export your labels.',
            ),
    );
}
