#pragma once

namespace zn {

/// Labels clusters of supra-threshold voxels in a single sweep with merging, and gives each voxel the size of its
/// cluster.
///
///   values        [0..v-1]        in: one half of a map, the other sign set to 0
///   coordinates   [0..v-1][0..2]  in: grid position of each voxel, magnitudes below 2^24
///   v                             number of voxels
///   zThreshold                    a voxel counts when its value is strictly above
///   minClusterSize                voxels that a cluster needs to survive
///   flags         [0..v-1]        out: size of the surviving cluster that holds the voxel, else 0
///
/// Returns the number of surviving clusters.
///
/// Every point that has no label when its turn comes becomes a seed and opens a new cluster: the points of its
/// 3 x 3 x 3 neighbourhood join it, and any cluster that already owns one of them is merged into it as a whole. Only
/// seeds search their neighbourhood, so a chain whose links lie between non-seeds stays split: this is not a
/// connected-component search, and the result depends on the voxel order. Linear scans without a spatial index:
/// O(points) per seed.
int labelClusters(const float* values, const int* const* coordinates, int v, float zThreshold, int minClusterSize,
                  int* flags);

} // namespace zn
