/** A tab-separated table with a header line; cells as in the file. */
export interface Table {
    columns: string[];
    rows: string[][];
}

export function parseTable(text: string): Table {
    const lines = text
        .replace(/^\uFEFF/, '')
        .split(/\r?\n/)
        .filter((line) => line !== '');
    const [header = '', ...rest] = lines;
    return { columns: header.split('\t'), rows: rest.map((line) => line.split('\t')) };
}

/** The same for a table saved by a spreadsheet: a cell may be quoted, with the quotes inside it doubled. */
export function parseQuotedTable(text: string): Table {
    const [columns = [], ...rows] = quotedLines(text.replace(/^\uFEFF/, ''));
    return { columns, rows };
}

// Between quotes, tabs and line breaks belong to the cell. An unclosed quote is part of the text.
function quotedLines(text: string): string[][] {
    const cells = /(?:"((?:[^"]|"")*)"(?=[\t\r\n]|$)|([^\t\r\n]*))(\t|\r?\n|\r|$)/gy;
    const lines: string[][] = [[]];
    for (let match = cells.exec(text); match; match = cells.exec(text)) {
        lines[lines.length - 1].push(match[1]?.replaceAll('""', '"') ?? match[2]);
        if (cells.lastIndex >= text.length && match[3] !== '\t') break;
        if (match[3] !== '\t') lines.push([]);
    }
    return lines.filter((line) => line.some((cell) => cell !== ''));
}

/** A cell as written to such a table: quoted if it contains quotes, which table readers would otherwise remove. */
export function quoted(cell: string): string {
    return cell.includes('"') ? `"${cell.replaceAll('"', '""')}"` : cell;
}

/** A cell as a number; "n/a" and anything else that is not a number become NaN. */
export function numberIn(cell: string | undefined): number {
    return cell === undefined || cell.trim() === '' ? NaN : Number(cell);
}

/** All numbers of a column, given its position. */
export function columnOf(table: Table, position: number): number[] {
    return table.rows.map((row) => numberIn(row[position]));
}
