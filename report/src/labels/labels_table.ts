import { parseQuotedTable, quoted } from '../data/table';
import { type Entry, type Labels, labelNamed } from './labels';

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
        return [component, label ?? 'n/a', quoted(note.replace(/\s+/g, ' ').trim()) || 'n/a'].join('\t');
    });
    return `${['component\tclassification\tnote', ...rows].join('\n')}\n`;
}

function isMissing(cell: string): boolean {
    return cell === '' || cell === 'n/a';
}

/**
 * Reads such a table back, or a metrics table with its classification filled in: what it says about each component. An
 * n/a, an empty cell or a missing column changes nothing, so that a table can be added to existing labels.
 * Throws an error with a message for the reader.
 */
export function readLabelsTable(text: string, components: string[]): [string, Partial<Entry>][] {
    const table = parseQuotedTable(text);
    const at = (column: string): number => table.columns.indexOf(column);
    if (at('component') < 0 || at('classification') < 0) {
        throw new Error('The file has no columns "component" and "classification".');
    }
    const known = new Set(components);
    const seen = new Set<string>();
    return table.rows.map((row): [string, Partial<Entry>] => {
        const cell = (column: string): string => (row[at(column)] ?? '').trim();
        const component = cell('component');
        if (!known.has(component))
            throw new Error(`This run has no component "${component}"; is this another run's file?`);
        if (seen.has(component))
            throw new Error(`The file names ${component} a second time; give each component one label.`);
        seen.add(component);
        const said: Partial<Entry> = {};
        const word = cell('classification');
        const label = labelNamed(word);
        if (label) said.label = label;
        else if (!isMissing(word))
            throw new Error(`"${word}" is not one of signal, noise, unsure or n/a (${component}).`);
        if (!isMissing(cell('note'))) said.note = cell('note').replace(/\s+/g, ' ');
        return [component, said];
    });
}
