import { edges } from '../data/affine';
import { h } from '../dom';
import { grouped, plural, short } from '../numbers';
import type { Group } from './group';

function tile(title: string, value: string, detail: string): HTMLElement {
    return h(
        'div',
        { class: 'tile' },
        h('dt', {}, title),
        h('dd', {}, h('span', { class: 'tile-value' }, value), h('span', { class: 'tile-detail' }, detail)),
    );
}

/** The numbers of the study, and what the page leaves out. */
export function facts(group: Group): HTMLElement {
    const { plan, separation, runs, components } = group;
    const volumes = runs.map((run) => run.volumes);
    const [least, most] = [Math.min(...volumes), Math.max(...volumes)];
    const mm = edges(group.grid.affine).map((edge) => short(edge));
    const explained = runs.map(({ explainedPercent }) => explainedPercent).filter((value) => !Number.isNaN(value));
    const missing = leftOut(group);
    const tiles = [
        tile(
            'Runs',
            grouped(runs.length),
            `${least === most ? least : `${least}\u2013${most}`} volumes each, TR\u00a0${short(plan.RepetitionTime, 4)}\u00a0s`,
        ),
        tile('Voxels in all runs', grouped(group.voxelsInside), `${mm.join(' \u00d7 ')} mm`),
        tile(
            'Components',
            grouped(components.length),
            `of ${separation.ComponentsRequested} requested, ${plural(separation.Repeats, 'repeat')}`,
        ),
        tile('Rows of the group', grouped(plan.RowsKept), 'kept by the group PCA'),
    ];
    if (explained.length > 0) {
        const [low, high] = [Math.min(...explained), Math.max(...explained)].map((value) => value.toFixed(0));
        tiles.push(tile('Explained variance', `${low}\u2013${high} %`, 'of a run by the components together'));
    }
    return h(
        'section',
        { class: 'panel group-facts', 'aria-label': 'The study' },
        h('dl', { class: 'tiles' }, ...tiles),
        missing && h('p', { class: 'notes' }, missing),
    );
}

/** Which maps did not fit into the page; null: none is missing. */
export function leftOut({ runs, mostMapBytes }: Group): string | null {
    const missing = runs.filter(({ hasMaps }) => !hasMaps).length;
    if (missing === 0) return null;
    return (
        `This page holds the maps of ${runs.length - missing} of ${plural(runs.length, 'run')}, as many as fit into `
        + `${Math.round(mostMapBytes / 2 ** 20)} MiB, those with outlying amplitudes first. For the others it names the `
        + 'files of the maps.'
    );
}
