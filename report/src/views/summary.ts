import { drawMask, maskColumns } from '../brain/mask_picture';
import { ChartBox } from '../charts/chart';
import { showEigenvalues } from '../charts/eigenvalue_chart';
import { edges } from '../data/affine';
import { type Decomposition, meanImageShare } from '../data/decomposition';
import type { Run } from '../data/run';
import { h } from '../dom';
import { duration, grouped, plural, short } from '../numbers';
import { notesOf, warningsOf } from './warnings';

const LONG = 8; // characters that fit into a tile in large type

function tile(value: string, unit: string, name: string, detail = ''): HTMLElement {
    return h(
        'div',
        { class: 'tile' },
        h('dt', {}, name),
        h(
            'dd',
            {},
            h('span', { class: value.length > LONG ? 'tile-value tile-long' : 'tile-value' }, value),
            unit && h('span', { class: 'tile-unit' }, ` ${unit}`),
            detail && h('span', { class: 'tile-detail' }, detail),
        ),
    );
}

export function seedOf(run: Run): string | null {
    const seed = run.facts.Seed ?? run.facts.Settings.Seed;
    return seed === undefined || seed === null ? null : String(seed);
}

// Without the mean image where the result says so; older results only know the share of everything.
function varianceTile(facts: Decomposition): HTMLElement {
    const { FirstEigenvalue: first, LastEigenvalue: last } = facts.Settings;
    const overTime = facts.RetainedVarianceOverTimePercent ?? null;
    const kept = overTime ?? facts.RetainedVariancePercent;
    const mean = meanImageShare(facts);
    const note =
        overTime !== null
            ? '; not counting the mean image'
            : mean === null
              ? ''
              : `; the first (the mean image) alone ${mean.toFixed(1)} %`;
    return tile(
        kept === null ? 'n/a' : kept.toFixed(1),
        '%',
        overTime === null ? 'Variance kept' : 'Variance over time kept',
        `eigenvalues ${first} to ${last}${note}`,
    );
}

function tiles(run: Run): HTMLElement {
    const { facts } = run;
    const { Input: input, Settings: settings, ElapsedSeconds: elapsed } = facts;
    const mm = edges(run.grid.affine)
        .map((edge) => short(edge))
        .join(' \u00d7 ');
    const seed = seedOf(run);
    return h(
        'dl',
        { class: 'tiles' },
        tile(String(facts.ComponentsFound), `of ${settings.Components}`, 'Components found'),
        varianceTile(facts),
        tile(grouped(run.voxelsInside), '', 'Voxels', `of ${input.Size.join(' \u00d7 ')}, ${mm} mm`),
        tile(grouped(input.Volumes), '', 'Volumes', duration(input.Volumes * run.trSeconds)),
        tile(short(run.trSeconds, 4), 's', 'Repetition time'),
        tile(duration(elapsed.Total), '', 'Run time', `${(facts.PeakMemoryBytes / 2 ** 20).toFixed(0)} MiB of memory`),
        seed !== null && tile(seed, '', 'Seed', 'the same seed gives the same maps'),
        tile(facts.GeneratedBy.Plugin.Version, '', 'Plug-in version', `znica ${facts.GeneratedBy.Version}`),
    );
}

/** "50 of 50 components \u00b7 51,259 voxels \u00b7 ..." */
function lineOf(run: Run, warnings: number): string {
    const { facts } = run;
    const kept = facts.RetainedVarianceOverTimePercent ?? facts.RetainedVariancePercent;
    return [
        `${facts.ComponentsFound} of ${plural(facts.Settings.Components, 'component')}`,
        plural(run.voxelsInside, 'voxel'),
        `${plural(facts.Input.Volumes, 'volume')}, TR ${short(run.trSeconds, 4)} s`,
        kept !== null && `${kept.toFixed(1)} % of variance kept`,
        warnings > 0 && plural(warnings, 'warning'),
    ]
        .filter((part) => part !== false)
        .join(' \u00b7 ');
}

function maskFigure(run: Run): HTMLElement {
    const canvas = h('canvas', {
        class: 'mask-picture',
        role: 'img',
        'aria-label': `Outline of the mask, ${plural(run.voxelsInside, 'voxel')}, on the mean image`,
    });
    canvas.style.maxWidth = `${Math.min(100, 40 * maskColumns(run))}%`; // a few slices need not be large
    new ResizeObserver(() => {
        const width = Math.round(canvas.clientWidth * Math.min(2, window.devicePixelRatio || 1));
        if (width === 0 || width === canvas.width) return;
        canvas.width = width;
        drawMask(canvas, run);
    }).observe(canvas);
    return h('figure', { class: 'panel summary-mask' }, h('figcaption', {}, 'Mask on the mean image'), canvas);
}

/** The analysis and how it went: one line, and below it, while it is open, everything. */
export function summary(run: Run): { element: HTMLElement; isOpen: () => boolean; setOpen: (open: boolean) => void } {
    const eigenvalues = new ChartBox('eigenvalues', [220, 170]);
    showEigenvalues(eigenvalues, run.facts);
    const warnings = warningsOf(run);
    const notes = notesOf(run);
    const facts = h(
        'div',
        { class: 'panel summary-facts' },
        tiles(run),
        h('p', { class: 'summary-input' }, h('span', {}, 'Input '), h('code', {}, run.facts.Input.File)),
        warnings.length > 0
            && h('ul', { class: 'warnings', 'aria-label': 'Warnings' }, ...warnings.map((text) => h('li', {}, text))),
        notes.length > 0 && h('p', { class: 'notes' }, notes.join(' ')),
    );
    const values = h(
        'figure',
        { class: 'panel summary-eigenvalues' },
        h('figcaption', {}, 'Eigenvalues of the temporal covariance'),
        eigenvalues.element,
    );
    const body = h('div', { class: 'summary-body', id: 'summary-body' }, facts, values, maskFigure(run));
    const setOpen = (open: boolean): void => {
        body.classList.toggle('summary-closed', !open);
        line.setAttribute('aria-expanded', String(open));
    };
    const isOpen = (): boolean => !body.classList.contains('summary-closed');
    const line = h(
        'button',
        { type: 'button', class: 'summary-line', 'aria-controls': 'summary-body', onclick: () => setOpen(!isOpen()) },
        lineOf(run, warnings.length),
    );
    setOpen(true);
    const element = h(
        'section',
        { class: 'summary', 'aria-labelledby': 'summary-title' },
        h('h2', { id: 'summary-title', class: 'visually-hidden' }, 'Summary of the run'),
        line,
        body,
    );
    return { element, isOpen, setOpen };
}
