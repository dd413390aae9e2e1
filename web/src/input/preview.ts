import { drawMask } from '../../../report/src/brain/mask_picture';
import type { Affine, Vector } from '../../../report/src/data/affine';
import { Grid } from '../../../report/src/data/grid';
import type { Run } from '../../../report/src/data/run';
import { h } from '../../../report/src/dom';
import type { ResultFile } from '../engine/messages';

interface Facts {
    size: Vector;
    voxel_to_mm: Affine;
    oriented: boolean;
    volumes: number;
    tr_seconds: number;
    tr_source: string;
    voxels: number;
    voxels_excluded: number; // non-finite in some volume, or constant
    needed_bytes: number;
    available_bytes: number;
    notes: string[];
}

function sizeText(bytes: number): string {
    return bytes < 2 ** 30 ? `${Math.round(bytes / 2 ** 20)} MiB` : `${(bytes / 2 ** 30).toFixed(1)} GiB`;
}

function maskText({ voxels, voxels_excluded }: Facts): string {
    const excluded = voxels_excluded > 0 ? `; ${voxels_excluded} excluded (non-finite or constant)` : '';
    return `${voxels.toLocaleString('en')} voxels${excluded}`;
}

// What the picture of the mask needs of a run.
function maskedImage(facts: Facts, mean: Uint8Array, mask: Uint8Array): Run {
    const insideOf = new Int32Array(mask.length).fill(-1);
    const gridOf: number[] = [];
    mask.forEach((inside, index) => {
        if (inside) insideOf[index] = gridOf.push(index) - 1;
    });
    const grid = new Grid(facts.size, facts.voxel_to_mm, facts.oriented);
    return { grid, insideOf, gridOf: Int32Array.from(gridOf), grey: mean } as unknown as Run;
}

function row(name: string, value: string): HTMLElement[] {
    return [h('dt', {}, name), h('dd', {}, value)];
}

/** What is known of the input before the run, from the files that `znica preview` left. */
export function previewOf(files: ResultFile[]): HTMLElement {
    const bytes = (name: string): Uint8Array<ArrayBuffer> => files.find(({ path }) => path === name)!.bytes;
    const facts = JSON.parse(new TextDecoder().decode(bytes('facts.json'))) as Facts;
    const canvas = h('canvas', {
        width: 900,
        role: 'img',
        'aria-label': 'Axial slices of the mean image with the outline of the mask',
    });
    drawMask(canvas, maskedImage(facts, bytes('mean'), bytes('mask')));
    const notes = facts.notes.filter((note) => !/^(Input|Memory):/.test(note));
    return h(
        'div',
        { class: 'preview' },
        h(
            'dl',
            { class: 'facts' },
            ...row('Grid', `${facts.size.join(' × ')} voxels`),
            ...row('Volumes', String(facts.volumes)),
            ...row('TR', `${facts.tr_seconds} s (${facts.tr_source})`),
            ...row('Mask', maskText(facts)),
            ...row('Memory needed', `about ${sizeText(facts.needed_bytes)} of ${sizeText(facts.available_bytes)}`),
        ),
        notes.length > 0 && h('ul', { class: 'notes' }, ...notes.map((note) => h('li', {}, note))),
        h('figure', {}, h('figcaption', {}, 'Mean image; the outline is the mask'), canvas),
    );
}
