#pragma once

namespace zn {

/// Labels spatially compact groups of supra-threshold voxels by a single sweep with merging, and tells each voxel the
/// size of its cluster.
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
/// Every point without a label becomes a seed in its turn and opens a new cluster: the points of its 3 x 3 x 3 cube
/// join it, and a cluster that already owns one of them is merged into it whole. Only seeds look around, so a chain
/// whose links lie between non-seeds stays split: this is not a flood fill, and the result depends on the voxel order.
/// Linear scans without any spatial index: O(points) a seed.
int labelClusters(const float* values, const int* const* coordinates, int v, float zThreshold, int minClusterSize,
                  int* flags);

} // namespace zn
