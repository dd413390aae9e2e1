import { parseTable } from '../data/table';
import { type Entry, type Label, LABELS, type Labels } from './labels';

/**
 * The labels as a table that joins the metrics table on its column `component`:
 *
 *   component  classification  note
 *   ICA_00     signal          default mode
 *   ICA_01     n/a             n/a
 */
export function labelsTable(components: string[], labels: Labels): string {
    const rows = components.map((component) => {
        const { label, note } = labels.get(component);
        return [component, label ?? 'n/a', note.replace(/\s+/g, ' ').trim() || 'n/a'].join('\t');
    });
    return ['component\tclassification\tnote', ...rows].join('\n') + '\n';
}

/** Reads such a table back, or a metrics table with its classification filled in. Throws in words for the reader. */
export function readLabelsTable(text: string, components: string[]): [string, Entry][] {
    const table = parseTable(text);
    const at = (column: string): number => table.columns.indexOf(column);
    if (at('component') < 0 || at('classification') < 0) {
        throw new Error('The file has no columns "component" and "classification".');
    }
    const known = new Set(components);
    const words = new Set<string>(LABELS.map(({ label }) => label));
    return table.rows.map((row): [string, Entry] => {
        const component = row[at('component')];
        if (!known.has(component)) throw new Error(`This run has no component "${component}"; is it another run's file?`);
        const word = row[at('classification')] ?? 'n/a';
        if (word !== 'n/a' && word !== '' && !words.has(word)) {
            throw new Error(`"${word}" is none of signal, noise, unsure and n/a (${component}).`);
        }
        const note = at('note') < 0 ? '' : (row[at('note')] ?? '');
        return [component, { label: words.has(word) ? (word as Label) : null, note: note === 'n/a' ? '' : note }];
    });
}
