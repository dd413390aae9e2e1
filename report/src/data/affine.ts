export type Vector = [number, number, number];
/** Rows x, y, z in millimetres; columns i, j, k and the offset. Voxels are counted from 0. */
export type Affine = [number[], number[], number[]];

export function toMm(affine: Affine, voxel: Vector): Vector {
    return affine.map((row) => row[0] * voxel[0] + row[1] * voxel[1] + row[2] * voxel[2] + row[3]) as Vector;
}

/** Length of a voxel's edge along each voxel axis, in millimetres. */
export function edges(affine: Affine): Vector {
    return [0, 1, 2].map((axis) => Math.hypot(affine[0][axis], affine[1][axis], affine[2][axis])) as Vector;
}
