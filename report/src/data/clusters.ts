import { type ComponentMap, NO_VALUE } from './component_map';
import type { Grid } from './grid';

/** A face-connected cluster of voxels of one sign. */
export interface Cluster {
    voxels: number;
    mass: number; // sum of the magnitudes, in the map's integers
    peak: number; // position inside the mask of the largest magnitude
}

/** The clusters of a map at a threshold. */
export interface Clusters {
    of: Int32Array; // one per voxel of the mask: number of its cluster, -1 below the threshold
    all: Cluster[];
}

/** What the clusters need to know about the run. */
export interface MaskedGrid {
    grid: Grid;
    insideOf: Int32Array;
    gridOf: Int32Array;
}

/** Finds the clusters of voxels whose magnitude is at least `threshold`, in units of z. O(voxels). */
export function clustersOf({ grid, insideOf, gridOf }: MaskedGrid, map: ComponentMap, threshold: number): Clusters {
    const { values } = map;
    const least = Math.max(1, threshold / map.scale);
    const [nx, ny, nz] = grid.size;
    const of = new Int32Array(values.length).fill(-1);
    const all: Cluster[] = [];
    const open: number[] = [];
    let positive = true;
    const take = (voxel: number): void => {
        if (voxel < 0 || of[voxel] >= 0) return;
        const value = values[voxel];
        if (value === NO_VALUE || Math.abs(value) < least || value > 0 !== positive) return;
        of[voxel] = all.length;
        open.push(voxel);
    };
    for (let seed = 0; seed < values.length; ++seed) {
        positive = values[seed] > 0;
        take(seed);
        if (open.length === 0) continue;
        const cluster = { voxels: 0, mass: 0, peak: seed };
        for (let voxel = open.pop(); voxel !== undefined; voxel = open.pop()) {
            const magnitude = Math.abs(values[voxel]);
            ++cluster.voxels;
            cluster.mass += magnitude;
            if (magnitude > Math.abs(values[cluster.peak])) cluster.peak = voxel;
            const index = gridOf[voxel];
            const x = index % nx;
            const y = Math.floor(index / nx) % ny;
            const z = Math.floor(index / (nx * ny));
            if (x > 0) take(insideOf[index - 1]);
            if (x < nx - 1) take(insideOf[index + 1]);
            if (y > 0) take(insideOf[index - nx]);
            if (y < ny - 1) take(insideOf[index + nx]);
            if (z > 0) take(insideOf[index - nx * ny]);
            if (z < nz - 1) take(insideOf[index + nx * ny]);
        }
        all.push(cluster);
    }
    return { of, all };
}

/** Position inside the mask of the voxel of a cluster that is nearest to its centre of mass. */
export function centreOf({ grid, gridOf }: MaskedGrid, map: ComponentMap, { of }: Clusters, cluster: number): number {
    const [nx, ny] = grid.size;
    const members: number[] = [];
    const centre = [0, 0, 0];
    let mass = 0;
    const at = (voxel: number): number[] => {
        const index = gridOf[voxel];
        return [index % nx, Math.floor(index / nx) % ny, Math.floor(index / (nx * ny))];
    };
    for (let voxel = 0; voxel < of.length; ++voxel) {
        if (of[voxel] !== cluster) continue;
        members.push(voxel);
        const weight = Math.abs(map.values[voxel]);
        mass += weight;
        at(voxel).forEach((position, axis) => {
            centre[axis] += weight * position;
        });
    }
    let best = members[0];
    let nearest = Infinity;
    for (const voxel of members) {
        const far = at(voxel).reduce((sum, position, axis) => sum + (position - centre[axis] / mass) ** 2, 0);
        if (far >= nearest) continue;
        nearest = far;
        best = voxel;
    }
    return best;
}
