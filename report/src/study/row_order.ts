import { STATUSES, type StudyRun } from './study';

/** What the rows are sorted by: the state, the name, or a column. */
export type Key = 'status' | 'name' | number;

function byStatus(a: StudyRun, b: StudyRun): number {
    return STATUSES.indexOf(a.status) - STATUSES.indexOf(b.status) || b.outlying.length - a.outlying.length;
}

/** The runs in order. By state: those without a result first, then those with most outliers. Missing values last. */
export function sorted(runs: StudyRun[], key: Key, descending: boolean): StudyRun[] {
    const direction = descending ? -1 : 1;
    return [...runs].sort((a, b) => {
        if (key === 'status')
            return direction * byStatus(a, b) || a.name.localeCompare(b.name, 'en', { numeric: true });
        if (key === 'name') return direction * a.name.localeCompare(b.name, 'en', { numeric: true });
        const [x, y] = [a.values[key], b.values[key]];
        if (x === null || y === null) return Number(x === null) - Number(y === null);
        return direction * (x - y);
    });
}
