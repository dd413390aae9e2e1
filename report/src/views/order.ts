import { METRICS } from '../data/metrics';
import { type Component, isRepeated } from '../data/run';
import { LABELS, type Label, type Labels } from '../labels/labels';

/** What the gallery is sorted by: the component's number, a parameter by its index, the label, or the stability. */
export type SortKey = 'order' | 'label' | 'stability' | number;

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

/** The options of the list of sort keys; stability only where the analysis was repeated. */
export function sortOptions(components: Component[]): { value: string; title: string }[] {
    return [
        { value: 'order', title: 'Component number' },
        ...METRICS.map((metric, i) => ({ value: String(i), title: metric.title })),
        ...(components.some(isRepeated) ? [{ value: 'stability', title: 'Stability over repeats (Iq)' }] : []),
        { value: 'label', title: 'Label' },
    ];
}

export function sortKey(value: string): SortKey {
    return value === 'order' || value === 'label' || value === 'stability' ? value : Number(value);
}

/** The components that pass every filter, in the requested order; missing values come last. */
export function select(components: Component[], selection: Selection, labels: Labels): Component[] {
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
