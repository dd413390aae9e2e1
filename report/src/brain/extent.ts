import { type Affine, toMm, type Vector } from '../data/affine';
import type { Brain } from '../data/brain';
import { Grid } from '../data/grid';
import type { Plane } from './plane';
import type { Frame } from './slice';

/** First and last position of the mask along the three body axes, limits included. */
export type Extent = [[number, number], [number, number], [number, number]];

const extents = new WeakMap<Brain, Extent>();

export function extentOfMask(brain: Brain): Extent {
    const known = extents.get(brain);
    if (known) return known;
    const { body } = brain.grid;
    const extent = body.map((axis) => [axis.size - 1, 0]) as Extent;
    for (const index of brain.gridOf) {
        const voxel = brain.grid.voxelAt(index);
        body.forEach((axis, a) => {
            const position = brain.grid.along(axis, voxel);
            extent[a][0] = Math.min(extent[a][0], position);
            extent[a][1] = Math.max(extent[a][1], position);
        });
    }
    extents.set(brain, extent);
    return extent;
}

/** Voxels around the mask in the views of a component. */
export const MARGIN = 2;

/** The part of a plane that the mask takes up, with a margin of `margin` voxels where the grid has them. */
export function frameOfMask(brain: Brain, plane: Plane, margin = 1): Frame {
    const extent = extentOfMask(brain);
    const range = (axis: Plane['across']): [number, number] => {
        const [from, to] = extent[brain.grid.body.indexOf(axis)];
        return [Math.max(0, from - margin), Math.min(axis.size - 1, to + margin)];
    };
    const [acrossFrom, acrossTo] = range(plane.across);
    const [upFrom, upTo] = range(plane.up);
    return { acrossFrom, acrossTo, upFrom, upTo };
}

/** Width and height of a part of a plane, in mm. */
export function frameSize(frame: Frame, plane: Plane): { width: number; height: number } {
    return {
        width: (frame.acrossTo - frame.acrossFrom + 1) * plane.across.mm,
        height: (frame.upTo - frame.upFrom + 1) * plane.up.mm,
    };
}

/** Whether the views of a component show a voxel. */
export function isInView(brain: Brain, voxel: Vector): boolean {
    return extentOfMask(brain).every(([from, to], a) => {
        const position = brain.grid.along(brain.grid.body[a], voxel);
        return position >= from - MARGIN && position <= to + MARGIN;
    });
}

/** Size of the views of a component along the body axes, in mm. */
export function croppedSize(brain: Brain): [number, number, number] {
    return extentOfMask(brain).map(([from, to], a) => {
        const { mm, size } = brain.grid.body[a];
        return (Math.min(size - 1, to + MARGIN) - Math.max(0, from - MARGIN) + 1) * mm;
    }) as [number, number, number];
}

/** The part of the grid that the views show, as a grid of its own, with the index of each voxel in the whole grid. */
export function croppedGrid(brain: Brain): { grid: Grid; whole: Int32Array } {
    const { grid } = brain;
    const first: Vector = [0, 0, 0];
    const size: Vector = [0, 0, 0];
    extentOfMask(brain).forEach(([from, to], a) => {
        const axis = grid.body[a];
        const [low, high] = [Math.max(0, from - MARGIN), Math.min(axis.size - 1, to + MARGIN)];
        first[axis.voxelAxis] = axis.flipped ? axis.size - 1 - high : low;
        size[axis.voxelAxis] = high - low + 1;
    });
    const offset = toMm(grid.affine, first);
    const affine = grid.affine.map((row, i) => [row[0], row[1], row[2], offset[i]]) as Affine;
    const cropped = new Grid(size, affine, grid.oriented);
    const whole = Int32Array.from({ length: cropped.count }, (_, i) =>
        grid.indexOf(cropped.voxelAt(i).map((v, axis) => v + first[axis]) as Vector),
    );
    return { grid: cropped, whole };
}
