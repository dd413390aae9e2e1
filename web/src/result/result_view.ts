import type { Keeper } from '../../../report/src/data/blocks';
import { h } from '../../../report/src/dom';
import type { Engine } from '../engine/engine';
import type { ResultFile } from '../engine/messages';
import { downloads, save } from './downloads';
import type { ReportParts } from './report_parts';

export interface ResultFacts {
    files: ResultFile[];
    report: ReportParts | null;
    stem: string;
    seconds: number;
    heapBytes: number;
    /** What the command said about a result that is not complete; empty for one that is. */
    complaint: string;
}

// A frame with the report. A blob could not store labels in a page from disk, so the page is its `srcdoc`.
function reportFrame({ files, report }: ResultFacts): HTMLElement {
    const frame = h('iframe', { class: 'report', title: 'Report' }) as HTMLIFrameElement & Partial<Keeper>;
    if (!report) return frame;
    const { bytes } = files.find(({ path }) => path === 'report.html')!;
    frame.packedPart = (name) => {
        const place = report.places.get(name);
        return place ? new TextDecoder().decode(bytes.subarray(...place)) : null;
    };
    frame.srcdoc = report.page;
    return frame;
}

/** The report of a run, as the file shows it, below a bar with the downloads. `close`: back to the input. */
export function resultView(engine: Engine, result: ResultFacts, close: () => void): HTMLElement {
    const { files, stem } = result;
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
        reportFrame(result),
    );
}
