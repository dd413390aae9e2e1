import { h } from '../dom';
import type { Study, StudyRun } from './study';
import { thumbnail } from './thumbnail';

const KIND = { done: 'good', 'fewer components': 'partial', 'no result': 'bad', 'no record': 'bad' };

/** 1234.5 as "1,235", 0.04567 as "0.0457"; a dash for what is missing. */
export function numberText(value: number | null): string {
    if (value === null) return '–';
    return value.toLocaleString('en', {
        maximumSignificantDigits: Math.abs(value) >= 1000 ? 12 : 3,
        maximumFractionDigits: 3,
    });
}

function cell(study: Study, run: StudyRun, column: number): HTMLElement {
    const { title, kind } = study.columns[column];
    const apart = run.outlying.includes(column);
    const about = apart ? `${title}: more than 3 median absolute deviations from the median` : null;
    return h(
        'td',
        { class: `number of-${kind}${apart ? ' outlying' : ''}`, title: about },
        numberText(run.values[column]),
    );
}

/** "denoised (nonaggr)", a link where there is a report, or why it failed. */
function denoising(run: StudyRun): (HTMLElement | null)[] {
    if (!run.denoised) return [];
    const { failed, message, method, notes, report } = run.denoised;
    const file = encodeURIComponent(run.name);
    const what = failed ? 'not denoised' : `denoised (${method})`;
    const title = report ? h('a', { href: `${file}_denoised.html` }, what) : what;
    const log = h('a', { class: 'log', href: `logs/denoise/${file}.log` }, 'log');
    return [
        h('div', { class: 'denoised' }, title, ' ', log),
        message ? h('p', { class: 'message' }, message) : null,
        ...notes.map((note) => h('p', { class: 'note' }, note)),
    ];
}

/** One row of the table: picture, name with messages and links, status, measures. */
export function runRow(study: Study, run: StudyRun): HTMLTableRowElement {
    const file = encodeURIComponent(run.name);
    const name = run.report ? h('a', { href: `${file}.html` }, run.name) : run.name;
    const code = run.exitStatus === null ? '' : `exit status ${run.exitStatus}`;
    return h(
        'tr',
        { 'data-run': run.name, 'data-status': run.status },
        h('td', {}, thumbnail(run.thumbnail, `Mean image of ${run.name} with the outline of the mask`)),
        h(
            'td',
            { class: 'about' },
            h('div', { class: 'run-name' }, name, ' ', h('a', { class: 'log', href: `logs/${file}.log` }, 'log')),
            run.message && h('p', { class: 'message' }, run.message),
            ...run.notes.map((note) => h('p', { class: 'note' }, note)),
            ...denoising(run),
        ),
        h(
            'td',
            {},
            h('span', { class: `chip chip-${KIND[run.status]}`, title: code }, run.status),
            ' ',
            run.denoised?.failed ? h('span', { class: 'chip chip-bad' }, 'not denoised') : null,
        ),
        ...study.columns.map((_, column) => cell(study, run, column)),
    );
}
