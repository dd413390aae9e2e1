import type { Grid } from './grid';

/** Where maps lie: the grid with its mask, and the image that they are drawn over. */
export interface Brain {
    grid: Grid;
    insideOf: Int32Array; // grid index -> position inside the mask, -1 outside
    gridOf: Int32Array; // position inside the mask -> grid index
    grey: Uint8Array; // one per voxel of the grid
}
