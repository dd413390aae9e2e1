import { h } from '../../../report/src/dom';
import type { Engine } from '../engine/engine';
import type { ResultFile } from '../engine/messages';
import { downloads, save } from './downloads';

export interface ResultFacts {
    files: ResultFile[];
    stem: string;
    seconds: number;
    heapBytes: number;
    /** What the command said about a result that is not complete; empty for one that is. */
    complaint: string;
}

/** The report of a run, as the file shows it, below a bar with the downloads. `close`: back to the input. */
export function resultView(engine: Engine, result: ResultFacts, close: () => void): HTMLElement {
    const { files, stem } = result;
    const report = files.find(({ path }) => path === 'report.html');
    const everything = h(
        'button',
        {
            class: 'button',
            onclick: async () => {
                const zipped = await engine.zip(files.map((file) => ({ ...file, path: `${stem}/${file.path}` })));
                save(`${stem}.zip`, zipped.files[0].bytes);
            },
        },
        'Everything (.zip)',
    );
    const frame = h('iframe', { class: 'report', title: 'Report' });
    if (report) frame.srcdoc = new TextDecoder().decode(report.bytes); // a blob could not store labels in a page from disk
    return h(
        'section',
        { class: 'result' },
        h(
            'div',
            { class: 'result-bar' },
            h('strong', {}, stem),
            h(
                'span',
                { class: 'muted', 'data-seconds': result.seconds.toFixed(2), 'data-heap': result.heapBytes },
                `${result.seconds.toFixed(1)} s, peak memory ${Math.round(result.heapBytes / 2 ** 20)} MiB`,
            ),
            result.complaint !== '' && h('span', { class: 'complaint' }, result.complaint),
            downloads(files, stem, everything),
            h('button', { class: 'button', id: 'close', onclick: close }, 'Back to the input'),
        ),
        frame,
    );
}
