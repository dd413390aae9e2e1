import type { Grid } from '../data/grid';

const HEADER_BYTES = 352; // 348 bytes, and four that mean "no extension"
const UINT8 = 2;
const INT16 = 4;

/** A NIfTI-1 file in memory: one volume on the run's grid, value = stored * slope. */
export function niftiBuffer(grid: Grid, voxels: Uint8Array | Int16Array, slope: number): ArrayBuffer {
    const buffer = new ArrayBuffer(HEADER_BYTES + voxels.byteLength);
    const view = new DataView(buffer);
    const int16 = (at: number, values: number[]): void =>
        values.forEach((value, i) => view.setInt16(at + 2 * i, value, true));
    const float32 = (at: number, values: number[]): void =>
        values.forEach((value, i) => view.setFloat32(at + 4 * i, value, true));
    const edge = (axis: number): number => Math.hypot(...grid.affine.map((row) => row[axis]));

    view.setInt32(0, 348, true);
    int16(40, [3, ...grid.size, 1, 1, 1, 1]); // dim
    int16(70, voxels instanceof Uint8Array ? [UINT8, 8] : [INT16, 16]); // datatype, bitpix
    float32(76, [1, edge(0), edge(1), edge(2), 1, 1, 1, 1]); // pixdim
    float32(108, [HEADER_BYTES, slope, 0]); // vox_offset, scl_slope, scl_inter
    view.setUint8(123, 2); // xyzt_units: millimetres
    int16(252, [0, 1]); // qform_code, sform_code
    float32(280, grid.affine.flat()); // srow_x, srow_y, srow_z
    [...'n+1\0'].forEach((letter, i) => view.setUint8(344 + i, letter.charCodeAt(0)));
    new Uint8Array(buffer, HEADER_BYTES).set(new Uint8Array(voxels.buffer, voxels.byteOffset, voxels.byteLength));
    return buffer;
}
