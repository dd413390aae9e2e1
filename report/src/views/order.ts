import { METRICS } from '../data/metrics';
import { type Component, isRepeated, type Run } from '../data/run';
import { LABELS, type Label, type Labels } from '../labels/labels';

const NAMED_KEYS = ['order', 'partner', 'explained', 'confound', 'stability', 'label'] as const;

/** What the gallery is sorted by: a parameter by its index, or something else by its name. */
export type SortKey = (typeof NAMED_KEYS)[number] | number;

export interface Filter {
    metric: number;
    least: number; // -Infinity: no lower limit
    most: number;
}

export interface Selection {
    sort: SortKey;
    descending: boolean;
    filters: Filter[];
    label: Label | 'none' | 'all';
}

/** The options of the list of sort keys; those that no component has a value for are left out. */
export function sortOptions({ compared, components }: Run): { value: string; title: string }[] {
    return [
        { value: 'order', title: 'Component number' },
        ...(compared ? [{ value: 'partner', title: `Match in ${compared.folder}: |r|` }] : []),
        ...(components.some(({ measures }) => !Number.isNaN(measures.explainedPercent))
            ? [{ value: 'explained', title: 'Explained variance' }]
            : []),
        ...METRICS.map((metric, i) => ({ value: String(i), title: metric.title })),
        ...(components.some(isRepeated) ? [{ value: 'stability', title: 'Stability over repeats (Iq)' }] : []),
        ...(components.some(({ measures }) => measures.confound)
            ? [{ value: 'confound', title: 'Confound: largest |r|' }]
            : []),
        { value: 'label', title: 'Label' },
    ];
}

/** Whether the components with the largest values are of the most interest, so that they come first. */
export function startsDescending(key: SortKey): boolean {
    if (key === 'partner' || key === 'explained' || key === 'stability' || key === 'confound') return true;
    return typeof key === 'number' && METRICS[key].column.includes('_max');
}

/** The order that the gallery opens with. */
export function defaultSort({ compared, components }: Run): SortKey {
    if (compared) return 'partner';
    return components.some(({ measures }) => !Number.isNaN(measures.explainedPercent)) ? 'explained' : 'order';
}

export function sortKey(value: string): SortKey {
    return NAMED_KEYS.find((key) => key === value) ?? Number(value);
}

/** The components that pass every filter, in the requested order; missing values come last. */
export function select({ compared, components }: Run, selection: Selection, labels: Labels): Component[] {
    const { sort, descending, filters, label } = selection;
    const passes = (component: Component): boolean => {
        const own = labels.get(component.name).label;
        if (label !== 'all' && (label === 'none' ? own !== null : own !== label)) return false;
        return filters.every(({ metric, least, most }) => {
            const value = component.values[metric];
            return (least === -Infinity || value >= least) && (most === Infinity || value <= most);
        });
    };
    const rank = (component: Component): number => {
        if (sort === 'order') return component.index;
        if (sort === 'partner') return Math.abs(compared?.partners.get(component)?.r ?? NaN);
        if (sort === 'explained') return component.measures.explainedPercent;
        if (sort === 'confound') return component.measures.confound?.strength ?? NaN;
        if (sort === 'stability') return component.facts?.StabilityIndex ?? NaN;
        if (sort !== 'label') return component.values[sort];
        const at = LABELS.findIndex((entry) => entry.label === labels.get(component.name).label);
        return at < 0 ? NaN : at;
    };
    return components.filter(passes).sort((a, b) => {
        const [x, y] = [rank(a), rank(b)];
        if (Number.isNaN(x) || Number.isNaN(y))
            return Number(Number.isNaN(x)) - Number(Number.isNaN(y)) || a.index - b.index;
        return (descending ? y - x : x - y) || a.index - b.index;
    });
}
