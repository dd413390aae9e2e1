import { h } from '../dom';
import { fadeEdges } from '../scroll_edges';
import { toggleTheme } from '../theme';
import { type Key, sorted } from './row_order';
import { runRow } from './run_row';
import { STATUSES, type Study, type StudyRun } from './study';

const TITLES = { status: 'Status', name: 'Run' };

/** The entire page: head with filters, table of runs. */
export class StudyView {
    readonly element: HTMLElement;
    private readonly rows = new Map<StudyRun, HTMLTableRowElement>();
    private readonly table = h('table', { class: 'runs' });
    private readonly body = h('tbody');
    private readonly count = h('span', { class: 'count', role: 'status' });
    private readonly heads = new Map<Key, HTMLElement>();
    private key: Key = 'status';
    private descending = false;
    private words: string[] = [];
    private wanted = '';

    constructor(private readonly study: Study) {
        for (const run of study.runs) this.rows.set(run, runRow(study, run));
        this.fillTable();
        const box = h('main', { class: 'runs-box' }, this.table);
        fadeEdges(box);
        this.element = h('div', { class: 'study' }, this.head(), box);
        this.sort();
        this.filter();
    }

    private head(): HTMLElement {
        const search = h('input', {
            type: 'text',
            placeholder: 'Filter: sub-01, rest, a message …',
            'aria-label': 'Show only runs that contain these words',
            oninput: () => {
                this.words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
                this.filter();
            },
        });
        const status = h(
            'select',
            {
                'aria-label': 'Show only runs of this kind',
                onchange: () => {
                    this.wanted = status.value;
                    this.filter();
                },
            },
            h('option', { value: '' }, `all runs (${this.study.runs.length})`),
            ...STATUSES.map((name) => this.kind(name, name, (run) => run.status === name)),
            this.kind('outliers', 'with outliers', (run) => run.outlying.length > 0),
        );
        return h(
            'header',
            { class: 'page-head' },
            h(
                'div',
                { class: 'page-title' },
                h('h1', {}, this.study.name),
                h('span', { class: 'page-kind' }, 'ICA runs'),
            ),
            search,
            status,
            this.kinds(),
            this.count,
            h(
                'div',
                { class: 'page-actions' },
                this.study.group && h('a', { class: 'button', href: this.study.group }, 'Group analysis'),
                h('a', { class: 'button', href: 'runs.tsv' }, 'Table (TSV)'),
                h('button', { class: 'button', type: 'button', onclick: toggleTheme }, 'Light / dark'),
            ),
        );
    }

    /** Chooses the measures that are shown: all of them are wider than a screen. */
    private kinds(): HTMLElement | null {
        if (!this.study.columns.some(({ kind }) => kind === 'denoising')) return null;
        this.table.dataset.shown = 'denoising';
        const select = h(
            'select',
            {
                'aria-label': 'Show these measures',
                onchange: () => {
                    this.table.dataset.shown = select.value;
                },
            },
            h('option', { value: 'denoising' }, 'measures of denoising'),
            h('option', { value: 'analysis' }, 'measures of the analysis'),
        );
        return select;
    }

    private kind(value: string, title: string, belongs: (run: StudyRun) => boolean): HTMLElement | null {
        const count = this.study.runs.filter(belongs).length;
        return count === 0 ? null : h('option', { value }, `${title} (${count})`);
    }

    private fillTable(): void {
        const columns = this.study.columns.map(({ title, units, description, kind }, column) =>
            this.headCell(column, units ? `${title} (${units})` : title, description, `number of-${kind}`),
        );
        this.table.append(
            h(
                'thead',
                {},
                h(
                    'tr',
                    {},
                    h('th', {}, 'Mean image'),
                    this.headCell('name', TITLES.name, ''),
                    this.headCell(
                        'status',
                        TITLES.status,
                        'Those without a result first, then those with most outliers',
                    ),
                    ...columns,
                ),
            ),
            this.body,
        );
    }

    private headCell(key: Key, title: string, about: string, style = ''): HTMLElement {
        const button = h('button', { type: 'button', title: about, onclick: () => this.sortBy(key) }, title);
        const cell = h('th', { class: style }, button);
        this.heads.set(key, cell);
        return cell;
    }

    private sortBy(key: Key): void {
        this.descending = key === this.key && !this.descending;
        this.key = key;
        this.sort();
    }

    private sort(): void {
        for (const cell of this.heads.values()) cell.removeAttribute('aria-sort');
        this.heads.get(this.key)!.setAttribute('aria-sort', this.descending ? 'descending' : 'ascending');
        this.body.append(...sorted(this.study.runs, this.key, this.descending).map((run) => this.rows.get(run)!));
    }

    private shows(run: StudyRun): boolean {
        if (this.wanted === 'outliers' && run.outlying.length === 0) return false;
        if (this.wanted && this.wanted !== 'outliers' && run.status !== this.wanted) return false;
        const denoised = run.denoised ? [run.denoised.message, run.denoised.method, ...run.denoised.notes] : [];
        const text = [run.name, run.status, run.message, ...run.notes, ...denoised].join(' ').toLowerCase();
        return this.words.every((word) => text.includes(word));
    }

    private filter(): void {
        let shown = 0;
        for (const [run, row] of this.rows) {
            row.hidden = !this.shows(run);
            shown += row.hidden ? 0 : 1;
        }
        this.count.textContent = `${shown} of ${this.study.runs.length} runs`;
    }
}
