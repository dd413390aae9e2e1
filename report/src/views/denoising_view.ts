import type { Look } from '../brain/look';
import { ChartBox } from '../charts/chart';
import { showVolumes } from '../charts/volumes_chart';
import type { ComponentMap } from '../data/component_map';
import type { Denoising, QualityRow, RemovedPart } from '../data/denoising';
import type { Run } from '../data/run';
import { h } from '../dom';
import { grouped, plural, short } from '../numbers';
import { fadeEdges } from '../scroll_edges';
import { carpets } from './carpets';
import { evidenceMap, lowestOf } from './evidence_map';
import { removedTable } from './removed_table';
import type { View } from './view';

const METHODS: Record<Denoising['method'], string> = {
    nonaggr:
        'Non-aggressive: all components were fitted together, and the part of the rejected ones was subtracted. What '
        + 'they share with kept components stayed.',
    aggr: 'Aggressive: the rejected components were regressed out alone, with all that they share with kept components.',
    orthaggr:
        'Orthogonalised: the kept components were regressed out of the rejected ones, and what was left of those was '
        + 'regressed out.',
};

function summaryOf(method: Denoising['method'], rejected: number, parts: RemovedPart[]): string {
    if (rejected > 0) return METHODS[method];
    return parts.some(({ removed }) => removed)
        ? 'No component was rejected: only confounds or slow drifts were removed.'
        : 'No component was rejected: nothing was removed, and the image stays as it is.';
}

/** The evidence that an image was denoised, and that nothing else was lost. */
export class DenoisingView implements View {
    readonly element: HTMLElement;
    private readonly maps = h('div', { class: 'evidence-maps' });
    private readonly growth = h('p', { class: 'chart-note' });
    private drawn: Promise<void> | null = null;

    constructor(
        private readonly run: Run,
        private readonly denoising: Denoising,
        private readonly look: Look,
    ) {
        this.element = h(
            'main',
            { class: 'view denoising' },
            this.summary(),
            h(
                'section',
                { class: 'panel fates-panel' },
                h('h2', { class: 'visually-hidden' }, 'Components'),
                this.fates(),
            ),
            this.volumes(),
            carpets(denoising),
            h(
                'section',
                { class: 'panel maps-panel' },
                h('h2', { class: 'visually-hidden' }, 'Maps'),
                this.maps,
                this.growth,
            ),
        );
    }

    /** Draws the maps. */
    draw(): Promise<void> {
        this.drawn ??= this.addMaps();
        return this.drawn;
    }

    private async addMaps(): Promise<void> {
        const { maps, evidence } = this.denoising;
        const all = await Promise.all(maps.map((_, i) => evidence.get(i)));
        const plain = { ...this.look, threshold: 0, fewest: 0, opacity: 1 };
        const [before, after, removed] = all;
        const ratio: Look = { ...plain, colourMap: 'viridis', ceiling: Math.max(before.high, after.high) };
        const share: Look = { ...plain, colourMap: 'orange-blue', ceiling: Math.min(100, removed.high) };
        this.growth.textContent = growthText(removed);
        this.maps.replaceChildren(
            ...all.map((map, i) => evidenceMap(this.run, maps[i].title, map, map === removed ? share : ratio)),
        );
    }

    private fates(): HTMLElement {
        const {
            run,
            denoising: { parts },
        } = this;
        const tables = h(
            'div',
            { class: 'fates-scroll' },
            removedTable(run, parts, true),
            removedTable(run, parts, false),
        );
        fadeEdges(tables);
        return tables;
    }

    private summary(): HTMLElement {
        const { method, image, parts, quality, notes } = this.denoising;
        const components = this.run.components.length;
        const rejected = parts.filter(({ name, removed }) => removed && name.startsWith('ICA_')).length;
        return h(
            'section',
            { class: 'panel denoising-summary' },
            h('h2', {}, `${rejected} of ${plural(components, 'component')} removed`),
            h('p', {}, summaryOf(method, rejected, parts)),
            h('p', { class: 'summary-input' }, h('span', {}, 'Image '), h('code', {}, image)),
            qualityTable(quality),
            h(
                'p',
                { class: 'chart-note' },
                'Removing any regressor, even noise, lowers DVARS and raises temporal SNR a little; compare methods that '
                    + 'remove equally many.',
            ),
            notes.length > 0 && h('ul', { class: 'denoising-notes' }, ...notes.map((note) => h('li', {}, note))),
        );
    }

    private volumes(): HTMLElement {
        const { dvars_before, dvars_after, framewise_displacement, tr_seconds } = this.denoising;
        const dvars = new ChartBox('dvars', [680, 170]);
        showVolumes(
            dvars,
            [
                { label: 'Before', values: dvars_before, colour: 'curve-other' },
                { label: 'After', values: dvars_after, colour: 'curve' },
            ],
            'DVARS',
            tr_seconds,
        );
        const fd = framewise_displacement && new ChartBox('fd', [680, 130]);
        if (fd) {
            const curve = {
                label: 'Framewise displacement',
                values: framewise_displacement,
                colour: 'curve-predictor',
            };
            showVolumes(fd, [curve], 'FD (mm)', tr_seconds);
        }
        return h(
            'figure',
            { class: 'panel volumes-panel' },
            h('figcaption', {}, fd ? 'DVARS and framewise displacement' : 'DVARS'),
            dvars.element,
            fd?.element,
        );
    }
}

function growthText(removed: ComponentMap): string {
    const lowest = lowestOf(removed);
    return lowest < 0
        ? `Blue: voxels whose variance grew, by up to ${grouped(Math.ceil(-lowest))} %, because components that cancelled `
              + 'each other were not removed together.'
        : '';
}

const PER_CENT = 'per cent ';

// "per cent of that before" stands after the numbers and, for the rest, behind the title.
function qualityRow({ measure, title, units, before, after }: QualityRow): HTMLElement {
    const isShare = units.startsWith(PER_CENT);
    const rest = isShare ? units.slice(PER_CENT.length) : units;
    const cell = (value: number | null): HTMLElement =>
        h('td', { class: 'number' }, `${short(value ?? NaN, 4)}${isShare && value !== null ? ' %' : ''}`);
    return h(
        'tr',
        { 'data-measure': measure },
        h('th', { scope: 'row' }, title, rest !== '' && h('span', { class: 'tile-unit' }, ` (${rest})`)),
        cell(before),
        cell(after),
    );
}

function qualityTable(rows: QualityRow[]): HTMLElement {
    return h(
        'table',
        { class: 'quality' },
        h('thead', {}, h('tr', {}, ...['Measure', 'Before', 'After'].map((head) => h('th', { scope: 'col' }, head)))),
        h('tbody', {}, ...rows.map(qualityRow)),
    );
}
