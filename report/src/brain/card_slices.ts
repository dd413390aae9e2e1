import type { Brain } from '../data/brain';
import { type ColouredMap, colouredPeak, focusOf } from '../data/coloured_map';
import { NO_VALUE } from '../data/component_map';
import { extentOfMask } from './extent';
import type { Look } from './look';
import { PLANES, type PlaneName, planeOf } from './plane';

/** One slice of a card: a plane and its position along the axis that it is stacked along. */
export interface CardSlice {
    plane: PlaneName;
    position: number;
}

/** The slices of a card, in rows from top to bottom. */
export type CardSlices = CardSlice[][];

const MORE = 5; // axial slices below the three planes
const THIN = 8; // axial slices of a mask that is shown completely

function axialSlices(brain: Brain): number {
    const [from, to] = extentOfMask(brain)[2];
    return to - from + 1;
}

/** The planes of the slices, row by row: the same for all maps. */
export function cardPlanes(brain: Brain): PlaneName[][] {
    const axial = (count: number): PlaneName[] => Array.from({ length: count }, () => 'axial');
    const count = axialSlices(brain);
    if (count > THIN) return [PLANES, axial(MORE)];
    const top = count <= 3 ? count : Math.ceil(count / 2);
    return top === count ? [axial(count)] : [axial(top), axial(count - top)];
}

/**
 * Slices that show where a component is: the three planes through the centre of its largest cluster, and axial slices
 * through what else is coloured: first the peak, if no plane contains it, then those with the most coloured voxels that
 * are not yet shown, weighted by their values. A thin mask is shown slice by slice.
 */
export function cardSlices(brain: Brain, coloured: ColouredMap, look: Look): CardSlices {
    const axial = (position: number): CardSlice => ({ plane: 'axial', position });
    if (axialSlices(brain) <= THIN) {
        let [next] = extentOfMask(brain)[2];
        return cardPlanes(brain).map((row) => row.map(() => axial(next++)));
    }
    const focus = focusOf(brain, coloured.map, look);
    const planes = PLANES.map((plane) => ({
        plane,
        position: brain.grid.along(planeOf(brain.grid, plane, false).through, focus),
    }));
    return [planes, moreSlices(brain, coloured, planes).map(axial)];
}

function moreSlices(brain: Brain, coloured: ColouredMap, planes: CardSlice[]): number[] {
    const { grid } = brain;
    const [from, to] = extentOfMask(brain)[2];
    const positionOf = (inside: number, plane: PlaneName): number =>
        grid.along(planeOf(grid, plane, false).through, grid.voxelAt(brain.gridOf[inside]));
    const isShown = (inside: number): boolean =>
        planes.some(({ plane, position }) => positionOf(inside, plane) === position);
    const weight = new Array<number>(to + 1).fill(0); // of the coloured voxels per axial slice that no plane contains
    const { map, clusters } = coloured;
    map.values.forEach((value, inside) => {
        if (value === 0 || value === NO_VALUE || clusters.of[inside] < 0 || isShown(inside)) return;
        weight[positionOf(inside, 'axial')] += Math.abs(value);
    });
    const taken = planes.filter(({ plane }) => plane === 'axial').map(({ position }) => position);
    const chosen: number[] = [];
    const take = (position: number): void => {
        taken.push(position);
        chosen.push(position);
    };
    const peak = colouredPeak(coloured);
    if (!isShown(peak)) take(positionOf(peak, 'axial'));
    while (chosen.length < MORE) {
        // Neighbours of a slice show nearly the same, so they count less.
        const worth = (position: number): number => {
            const far = Math.min(...taken.map((other) => Math.abs(other - position)));
            const share = Math.min(1, far / ((to - from + 1) / 8));
            return far === 0 ? -1 : (weight[position] + 1e-6) * share ** 2 + 1e-9 * far;
        };
        let best = from;
        for (let position = from; position <= to; ++position) if (worth(position) > worth(best)) best = position;
        take(best);
    }
    return chosen.sort((a, b) => a - b);
}
