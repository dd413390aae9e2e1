import type { Vector } from './affine';
import { type Clusters, centreOf, clustersOf, type MaskedGrid } from './clusters';
import { type ComponentMap, NO_VALUE } from './component_map';

/** A threshold on the magnitude of z, and the number of voxels from which a cluster is coloured. */
export interface Limits {
    threshold: number;
    fewest: number;
}

/** A map as it is coloured: without the clusters that are too small. */
export interface ColouredMap {
    map: ComponentMap; // zero in the voxels of small clusters
    clusters: Clusters; // of the whole map
    largest: number; // number of the coloured cluster with the largest mass; -1: none is coloured
}

const made = new WeakMap<ComponentMap, Limits & { coloured: ColouredMap }>(); // for the limits used last

export function colouredMap(run: MaskedGrid, map: ComponentMap, { threshold, fewest }: Limits): ColouredMap {
    const known = made.get(map);
    if (known && known.threshold === threshold && known.fewest === fewest) return known.coloured;
    const clusters = known?.threshold === threshold ? known.coloured.clusters : clustersOf(run, map, threshold);
    const values = map.values.map((value, voxel) => {
        const cluster = clusters.of[voxel];
        return cluster >= 0 && clusters.all[cluster].voxels < fewest ? 0 : value;
    });
    const largest = clusters.all.reduce((best, { voxels, mass }, i) => {
        if (voxels < fewest) return best;
        return best < 0 || mass > clusters.all[best].mass ? i : best;
    }, -1);
    const coloured = { map: { ...map, values }, clusters, largest };
    made.set(map, { threshold, fewest, coloured });
    return coloured;
}

/** Position inside the mask of the largest value that is coloured; that of the whole map if nothing is. */
export function colouredPeak({ map, clusters }: ColouredMap): number {
    let peak = -1;
    for (let voxel = 0; voxel < map.values.length; ++voxel) {
        const value = map.values[voxel];
        if (value === 0 || value === NO_VALUE || clusters.of[voxel] < 0) continue;
        if (peak < 0 || Math.abs(value) > Math.abs(map.values[peak])) peak = voxel;
    }
    return peak < 0 ? map.peak : peak;
}

/** The voxel at the centre of the largest coloured cluster; the peak of the map if nothing is coloured. */
export function focusOf(run: MaskedGrid, map: ComponentMap, limits: Limits): Vector {
    const { clusters, largest } = colouredMap(run, map, limits);
    const inside = largest < 0 ? map.peak : centreOf(run, map, clusters, largest);
    return run.grid.voxelAt(run.gridOf[inside]);
}
