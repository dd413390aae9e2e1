import { type Affine, edges, type Vector } from './affine';

/** An anatomical axis of the grid: position 0 is furthest left, posterior or inferior. */
export interface BodyAxis {
    voxelAxis: 0 | 1 | 2;
    flipped: boolean; // the voxel index decreases along the axis
    size: number; // voxels
    mm: number; // voxel size
    stride: number; // in the x-fastest order of the file
}

/** The voxel grid with its anatomical axes, derived from the affine; oblique grids use the nearest axes. */
export class Grid {
    readonly size: Vector;
    readonly affine: Affine;
    /** The affine says where left and right are; otherwise the body axes below are merely those of the file. */
    readonly oriented: boolean;
    /** Left to right, back to front, bottom to top. */
    readonly body: [BodyAxis, BodyAxis, BodyAxis];

    constructor(size: Vector, affine: Affine, oriented = true) {
        this.size = size;
        this.affine = affine;
        this.oriented = oriented;
        this.body = this.findBodyAxes();
    }

    get count(): number {
        return this.size[0] * this.size[1] * this.size[2];
    }

    indexOf(voxel: Vector): number {
        return voxel[0] + this.size[0] * (voxel[1] + this.size[1] * voxel[2]);
    }

    voxelAt(index: number): Vector {
        const [nx, ny] = this.size;
        return [index % nx, Math.floor(index / nx) % ny, Math.floor(index / (nx * ny))];
    }

    contains(voxel: Vector): boolean {
        return voxel.every((v, axis) => v >= 0 && v < this.size[axis]);
    }

    /** Position of a voxel along a body axis, from 0. */
    along(axis: BodyAxis, voxel: Vector): number {
        const index = voxel[axis.voxelAxis];
        return axis.flipped ? axis.size - 1 - index : index;
    }

    /** Contribution of a position along a body axis to the voxel's linear index. */
    offset(axis: BodyAxis, position: number): number {
        return (axis.flipped ? axis.size - 1 - position : position) * axis.stride;
    }

    /** The same voxel with another position along one body axis, kept inside the grid. */
    moved(voxel: Vector, axis: BodyAxis, position: number): Vector {
        const inside = Math.min(Math.max(position, 0), axis.size - 1);
        const result: Vector = [...voxel];
        result[axis.voxelAxis] = axis.flipped ? axis.size - 1 - inside : inside;
        return result;
    }

    private findBodyAxes(): [BodyAxis, BodyAxis, BodyAxis] {
        const mm = edges(this.affine);
        const strides = [1, this.size[0], this.size[0] * this.size[1]];
        const free = new Set<0 | 1 | 2>([0, 1, 2]);
        return [0, 1, 2].map((row) => {
            const share = (axis: number): number => Math.abs(this.affine[row][axis]) / (mm[axis] || 1);
            const best = [...free].reduce((a, b) => (share(b) > share(a) ? b : a));
            free.delete(best);
            const flipped = this.affine[row][best] < 0;
            return { voxelAxis: best, flipped, size: this.size[best], mm: mm[best], stride: strides[best] };
        }) as [BodyAxis, BodyAxis, BodyAxis];
    }
}
