import type { Run } from '../data/run';
import type { Plane } from './plane';
import type { Frame } from './slice';

/** First and last position of the mask along the three body axes, limits included. */
export type Extent = [[number, number], [number, number], [number, number]];

const extents = new WeakMap<Run, Extent>();

export function extentOfMask(run: Run): Extent {
    const known = extents.get(run);
    if (known) return known;
    const { body } = run.grid;
    const extent = body.map((axis) => [axis.size - 1, 0]) as Extent;
    for (const index of run.gridOf) {
        const voxel = run.grid.voxelAt(index);
        body.forEach((axis, a) => {
            const position = run.grid.along(axis, voxel);
            extent[a][0] = Math.min(extent[a][0], position);
            extent[a][1] = Math.max(extent[a][1], position);
        });
    }
    extents.set(run, extent);
    return extent;
}

/** The part of a plane that the mask takes up, with a margin of `margin` voxels where the grid has them. */
export function frameOfMask(run: Run, plane: Plane, margin = 1): Frame {
    const extent = extentOfMask(run);
    const range = (axis: Plane['across']): [number, number] => {
        const [from, to] = extent[run.grid.body.indexOf(axis)];
        return [Math.max(0, from - margin), Math.min(axis.size - 1, to + margin)];
    };
    const [acrossFrom, acrossTo] = range(plane.across);
    const [upFrom, upTo] = range(plane.up);
    return { acrossFrom, acrossTo, upFrom, upTo };
}
