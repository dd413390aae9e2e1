/** A tab-separated table with a header line, cells as they stand in the file. */
export interface Table {
    columns: string[];
    rows: string[][];
}

export function parseTable(text: string): Table {
    const lines = text.replace(/^\uFEFF/, '').split(/\r?\n/).filter((line) => line !== '');
    const [header = '', ...rest] = lines;
    return { columns: header.split('\t'), rows: rest.map((line) => line.split('\t')) };
}

/** A cell as a number; "n/a" and anything else that is none become NaN. */
export function numberIn(cell: string | undefined): number {
    return cell === undefined || cell.trim() === '' ? NaN : Number(cell);
}

/** All numbers of a column, given its position. */
export function columnOf(table: Table, position: number): number[] {
    return table.rows.map((row) => numberIn(row[position]));
}
