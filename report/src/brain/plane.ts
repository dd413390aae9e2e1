import type { BodyAxis, Grid } from '../data/grid';

export type PlaneName = 'sagittal' | 'coronal' | 'axial';

/** A slice orientation: the anatomical axes across and up the image, and the one that slices are stacked along. */
export interface Plane {
    name: PlaneName;
    across: BodyAxis;
    up: BodyAxis;
    through: BodyAxis;
    mirrored: boolean; // the axis across runs from right to left
    marks: Marks;
}

/** The letters of the body's sides at the edges of the image; empty where they are unknown. */
interface Marks {
    left: string;
    right: string;
    top: string;
    bottom: string;
}

const NO_MARKS: Marks = { left: '', right: '', top: '', bottom: '' };

export function planeOf(grid: Grid, name: PlaneName, radiological: boolean): Plane {
    const [x, y, z] = grid.body;
    const sides = radiological ? { left: 'R', right: 'L' } : { left: 'L', right: 'R' };
    if (name === 'sagittal') {
        return {
            name,
            across: y,
            up: z,
            through: x,
            mirrored: false,
            marks: grid.oriented ? { left: 'P', right: 'A', top: 'S', bottom: 'I' } : NO_MARKS,
        };
    }
    const [up, through] = name === 'coronal' ? [z, y] : [y, z];
    const ends = name === 'coronal' ? { top: 'S', bottom: 'I' } : { top: 'A', bottom: 'P' };
    const marks = grid.oriented ? { ...sides, ...ends } : NO_MARKS;
    return { name, across: x, up, through, mirrored: radiological, marks };
}

export const PLANES: PlaneName[] = ['axial', 'coronal', 'sagittal'];
