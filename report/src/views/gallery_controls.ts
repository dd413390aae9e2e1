import { METRICS } from '../data/metrics';
import type { Run } from '../data/run';
import { h } from '../dom';
import { LABELS } from '../labels/labels';
import { type Filter, type Selection, sortKey, sortOptions, startsDescending } from './order';

function options(list: { value: string; title: string }[]): HTMLOptionElement[] {
    return list.map(({ value, title }) => h('option', { value }, title));
}

function filterRow(filter: Filter, changed: () => void, removed: () => void): HTMLElement {
    const metric = h(
        'select',
        {
            'aria-label': 'Parameter to filter by',
            onchange: () => {
                filter.metric = Number(metric.value);
                changed();
            },
        },
        ...options(METRICS.map((entry, i) => ({ value: String(i), title: entry.title }))),
    );
    metric.value = String(filter.metric);
    const limit = (name: string, set: (value: number | null) => void): HTMLInputElement => {
        const input = h('input', {
            type: 'number',
            step: '0.05',
            'aria-label': name,
            placeholder: name,
            oninput: () => {
                set(input.value === '' ? null : Number(input.value));
                changed();
            },
        });
        return input;
    };
    return h(
        'div',
        { class: 'filter' },
        metric,
        limit('at least', (value) => {
            filter.least = value ?? -Infinity;
        }),
        limit('at most', (value) => {
            filter.most = value ?? Infinity;
        }),
        h(
            'button',
            { type: 'button', class: 'button button-icon', 'aria-label': 'Remove this filter', onclick: removed },
            '\u2715',
        ),
    );
}

/**
 * Sorting and filters of the gallery, beside the switch for its `sides`; calls back after every change of the
 * selection.
 */
export function galleryControls(
    run: Run,
    selection: Selection,
    count: HTMLElement,
    changed: () => void,
    sides: HTMLElement,
): HTMLElement {
    const sort = h(
        'select',
        {
            id: 'sort',
            onchange: () => {
                selection.sort = sortKey(sort.value);
                selection.descending = startsDescending(selection.sort);
                describe();
                changed();
            },
        },
        ...options(sortOptions(run)),
    );
    sort.value = String(selection.sort);
    const direction = h('button', {
        type: 'button',
        class: 'button button-icon',
        id: 'direction',
        onclick: () => {
            selection.descending = !selection.descending;
            describe();
            changed();
        },
    });
    const describe = (): void => {
        direction.textContent = selection.descending ? '\u2193' : '\u2191';
        direction.setAttribute('aria-label', selection.descending ? 'Largest first' : 'Smallest first');
        direction.title = selection.descending ? 'Largest first' : 'Smallest first';
    };
    const label = h(
        'select',
        {
            id: 'label-filter',
            'aria-label': 'Show labels',
            onchange: () => {
                selection.label = label.value as Selection['label'];
                changed();
            },
        },
        ...options([
            { value: 'all', title: 'All labels' },
            ...LABELS.map((entry) => ({ value: entry.label, title: `${entry.title} only` })),
            { value: 'none', title: 'Without a label' },
        ]),
    );
    const filters = h('div', { class: 'filters' });
    const add = (): void => {
        const filter: Filter = { metric: 5, least: -Infinity, most: Infinity };
        selection.filters.push(filter);
        const row = filterRow(filter, changed, () => {
            selection.filters = selection.filters.filter((other) => other !== filter);
            row.remove();
            changed();
        });
        filters.append(row);
        row.querySelector('select')?.focus();
    };
    describe();
    return h(
        'div',
        { class: 'gallery-controls' },
        h('div', { class: 'control' }, h('label', { for: 'sort' }, 'Sort by'), sort, direction),
        h('div', { class: 'control' }, label),
        h(
            'div',
            { class: 'control' },
            h('button', { type: 'button', class: 'button', id: 'add-filter', onclick: add }, '+ Filter'),
        ),
        filters,
        sides,
        count,
    );
}
