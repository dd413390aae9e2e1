import { h } from '../dom';
import { fixed } from '../numbers';
import { fadeEdges } from '../scroll_edges';
import type { View } from '../views/view';
import type { Correlation, Group, GroupComponent } from './group';

const MOST_WITH_NUMBERS = 24; // components; the cells of more would be too small

/**
 * The correlations between the components' courses: below the diagonal their mean over the runs, above it their spread.
 * The arrow keys go from cell to cell; the numbers of the cell are said above the table. Signs follow the maps as shown.
 */
export class CorrelationsView implements View {
    readonly element: HTMLElement;
    private readonly readout = h('p', { class: 'matrix-readout', role: 'status' });
    private readonly place = h('div', { class: 'table-scroll' });
    private readonly largest: Correlation; // magnitudes, which have the full colour

    constructor(private readonly group: Group) {
        const all = group.correlations.flat();
        const largest = (values: number[]): number => Math.max(0.01, ...values.filter((value) => !Number.isNaN(value)));
        this.largest = { mean: largest(all.map(({ mean }) => Math.abs(mean))), sd: largest(all.map(({ sd }) => sd)) };
        group.signs.onChange(() => this.draw());
        this.element = h(
            'main',
            { class: 'view group-correlations' },
            h(
                'section',
                { class: 'panel' },
                h('h2', {}, 'Correlation between the components\u2019 courses'),
                h(
                    'p',
                    { class: 'chart-note' },
                    'Below the diagonal: mean over the runs (of Fisher\u2019s z, as r). Above it: spread, the standard '
                        + 'deviation of Fisher\u2019s z over the runs. Signs follow the maps as this page shows them. The '
                        + `colours reach their full strength at |r| ${this.largest.mean.toFixed(2)} and at a spread of `
                        + `${this.largest.sd.toFixed(2)}.`,
                    h('span', { class: 'on-screen' }, ' The arrow keys go from cell to cell.'),
                ),
                this.readout,
                this.place,
            ),
        );
        fadeEdges(this.place);
        this.draw();
    }

    private draw(): void {
        const { components } = this.group;
        const cells = components.map((a) => components.map((b) => this.cell(a, b)));
        const small = components.length > MOST_WITH_NUMBERS;
        const first = cells[1]?.[0] ?? cells[0]?.[0];
        if (first) first.tabIndex = 0;
        this.readout.textContent = 'Point at a cell, or choose one with the keyboard.';
        const table = h(
            'table',
            {
                class: small ? 'matrix matrix-small' : 'matrix',
                onkeydown: (event) => step(event as KeyboardEvent, cells),
            },
            h('thead', {}, h('tr', {}, h('td'), ...components.map(({ title }) => h('th', { scope: 'col' }, title)))),
            h(
                'tbody',
                {},
                ...components.map(({ title }, a) => h('tr', {}, h('th', { scope: 'row' }, title), ...cells[a])),
            ),
        );
        table.style.setProperty('--columns', String(components.length));
        this.place.replaceChildren(table);
    }

    private cell(a: GroupComponent, b: GroupComponent): HTMLTableCellElement {
        if (a === b) {
            const onfocus = (): void => this.say(a.title);
            return h('td', { class: 'matrix-diagonal', tabindex: -1, 'aria-label': a.title, onfocus });
        }
        const { signs, correlations } = this.group;
        const { mean, sd } = correlations[a.index][b.index];
        const r = mean * signs.of(a) * signs.of(b);
        const below = a.index > b.index;
        const spread = Number.isNaN(sd) ? 'n/a' : fixed(sd, 3);
        const text = `${b.title} and ${a.title}: mean r ${fixed(r, 3)}, spread ${spread}`;
        const cell = h(
            'td',
            {
                'data-pair': `${a.name} ${b.name}`,
                'aria-label': text,
                tabindex: -1,
                onmouseenter: () => this.say(text),
                onfocus: () => this.say(text),
            },
            below ? fixed(r, 2) : Number.isNaN(sd) ? 'n/a' : fixed(sd, 2),
        );
        const share = below ? Math.abs(r) / this.largest.mean : (sd || 0) / this.largest.sd;
        cell.style.setProperty('--share', share.toFixed(3));
        cell.className = below ? (r < 0 ? 'matrix-negative' : 'matrix-positive') : 'matrix-spread';
        return cell;
    }

    private say(text: string): void {
        this.readout.textContent = text;
    }
}

function step(event: KeyboardEvent, cells: HTMLElement[][]): void {
    const row = cells.findIndex((line) => line.includes(event.target as HTMLElement));
    const by = { ArrowUp: [-1, 0], ArrowDown: [1, 0], ArrowLeft: [0, -1], ArrowRight: [0, 1] }[event.key];
    if (row < 0 || !by) return;
    event.preventDefault();
    event.stopPropagation();
    const column = cells[row].indexOf(event.target as HTMLElement);
    const next = cells[row + by[0]]?.[column + by[1]];
    if (!next) return;
    cells[row][column].tabIndex = -1;
    next.tabIndex = 0;
    next.focus();
}
