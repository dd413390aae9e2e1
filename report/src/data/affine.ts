export type Vector = [number, number, number];
/** Rows x, y, z in millimetres; columns i, j, k and the offset. Voxels are counted from 0. */
export type Affine = [number[], number[], number[]];

export function toMm(affine: Affine, voxel: Vector): Vector {
    return affine.map((row) => row[0] * voxel[0] + row[1] * voxel[1] + row[2] * voxel[2] + row[3]) as Vector;
}

/** The voxel nearest to a position in millimetres; it may lie outside the grid. */
export function toVoxel(affine: Affine, mm: Vector): Vector {
    const [a, b, c] = affine;
    const cross = (p: number[], q: number[]): Vector => [
        p[1] * q[2] - p[2] * q[1],
        p[2] * q[0] - p[0] * q[2],
        p[0] * q[1] - p[1] * q[0],
    ];
    const columns = [cross(b, c), cross(c, a), cross(a, b)]; // of the inverse, times the determinant
    const determinant = a[0] * columns[0][0] + a[1] * columns[0][1] + a[2] * columns[0][2];
    const from = affine.map((row, i) => mm[i] - row[3]);
    return [0, 1, 2].map((axis) =>
        Math.round(columns.reduce((sum, column, i) => sum + column[axis] * from[i], 0) / determinant),
    ) as Vector;
}

/** Voxel size along each voxel axis, in millimetres. */
export function edges(affine: Affine): Vector {
    return [0, 1, 2].map((axis) => Math.hypot(affine[0][axis], affine[1][axis], affine[2][axis])) as Vector;
}
