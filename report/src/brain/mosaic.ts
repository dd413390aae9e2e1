import type { ComponentMap } from '../data/component_map';
import type { BodyAxis, Grid } from '../data/grid';
import type { Run } from '../data/run';
import type { Look } from './look';
import { planeOf } from './plane';
import { drawSideMark } from './side_mark';
import { drawSlice, paintSlice } from './slice';

/** First and last position of the mask along the three body axes. */
export type Extent = [number, number][];

export function extentOfMask(run: Run): Extent {
    const axes: BodyAxis[] = run.grid.body;
    const extent: Extent = axes.map((axis) => [axis.size - 1, 0]);
    for (const index of run.gridOf) {
        const voxel = run.grid.voxelAt(index);
        axes.forEach((axis, a) => {
            const position = run.grid.along(axis, voxel);
            extent[a][0] = Math.min(extent[a][0], position);
            extent[a][1] = Math.max(extent[a][1], position);
        });
    }
    return extent;
}

function widened([from, to]: [number, number], size: number): [number, number] {
    return [Math.max(0, from - 1), Math.min(size - 1, to + 1)];
}

/**
 * Axial positions from the lower to the upper part of the mask, without the outermost slices, which show very little.
 */
export function mosaicPositions(grid: Grid, extent: Extent, count: number): number[] {
    const [from, to] = extent[2];
    const length = to - from;
    const many = Math.min(count, length + 1);
    return Array.from({ length: many }, (_, i) =>
        Math.min(grid.body[2].size - 1, Math.round(from + length * (0.12 + (0.8 * (i + 0.5)) / many))),
    );
}

/**
 * Draws axial slices of a map over the mean image side by side, from bottom to top, filling the width of the canvas.
 * Left and right are marked.
 */
export function drawMosaic(
    canvas: HTMLCanvasElement,
    run: Run,
    map: ComponentMap,
    look: Look,
    extent: Extent,
    columns: number,
    rows: number,
): void {
    const plane = planeOf(run.grid, 'axial', look.radiological);
    const [acrossFrom, acrossTo] = widened(extent[0], plane.across.size);
    const [upFrom, upTo] = widened(extent[1], plane.up.size);
    const frame = { acrossFrom, acrossTo, upFrom, upTo };
    const context = canvas.getContext('2d')!;
    const cellWidth = canvas.width / columns;
    const cellHeight = canvas.height / rows;
    const scale = Math.min(
        cellWidth / ((acrossTo - acrossFrom + 1) * plane.across.mm),
        cellHeight / ((upTo - upFrom + 1) * plane.up.mm),
    );
    const width = (acrossTo - acrossFrom + 1) * plane.across.mm * scale;
    const height = (upTo - upFrom + 1) * plane.up.mm * scale;
    context.fillStyle = '#000';
    context.fillRect(0, 0, canvas.width, canvas.height);
    mosaicPositions(run.grid, extent, columns * rows).forEach((position, i) => {
        const x = (i % columns) * cellWidth + (cellWidth - width) / 2;
        const y = Math.floor(i / columns) * cellHeight + (cellHeight - height) / 2;
        paintSlice(context, drawSlice(run, map, look, plane, position, frame), look, x, y, width, height);
    });
    drawSides(context, plane.marks, cellWidth, cellHeight);
}

// On the first slice only, which stands for all of them.
function drawSides(
    context: CanvasRenderingContext2D,
    marks: { left: string; right: string },
    cellWidth: number,
    cellHeight: number,
): void {
    const size = cellHeight * 0.16;
    context.textAlign = 'left';
    drawSideMark(context, marks.left, size * 0.2, cellHeight / 2, size);
    context.textAlign = 'right';
    drawSideMark(context, marks.right, cellWidth - size * 0.2, cellHeight / 2, size);
}
