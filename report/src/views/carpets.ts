import type { Denoising } from '../data/denoising';
import { h } from '../dom';

// One pixel per voxel and volume; the style sheet scales it.
function drawCarpet(canvas: HTMLCanvasElement, greys: Uint8Array, rows: number): void {
    canvas.width = greys.length / rows;
    canvas.height = rows;
    const context = canvas.getContext('2d')!;
    const image = context.createImageData(canvas.width, canvas.height);
    greys.forEach((grey, i) => {
        image.data.set([grey, grey, grey, 255], 4 * i);
    });
    context.putImageData(image, 0, 0);
}

/** The carpet plots before and after, one above the other. */
export function carpets({ carpets: { before, after }, carpet: { rows, limit } }: Denoising): HTMLElement {
    const plot = (title: string, greys: Uint8Array): HTMLElement => {
        const canvas = h('canvas', {
            class: 'carpet',
            role: 'img',
            'aria-label': `Carpet plot ${title.toLowerCase()}: ${rows} voxels over time`,
        });
        drawCarpet(canvas, greys, rows);
        return h('div', { class: 'carpet-row' }, h('span', { class: 'carpet-title' }, title), canvas);
    };
    return h(
        'figure',
        { class: 'panel' },
        h('figcaption', {}, 'Carpet plots'),
        plot('Before', before),
        plot('After', after),
        h(
            'p',
            { class: 'chart-note' },
            `Each row is a voxel of the mask, each column a volume; ${rows} voxels, ordered by their correlation with the `
                + `global signal before (largest at the top). Black to white: ${'\u2212'}${limit} to ${limit} standard `
                + 'deviations of the voxel before, in both plots.',
        ),
    );
}
