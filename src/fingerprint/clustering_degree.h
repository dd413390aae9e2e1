#pragma once

namespace zn {

/// Degree of clustering of each component: the share of its supra-threshold voxels, both signs, that lie in clusters of
/// at least minClusterSize voxels. Positive and negative clusters are never joined.
///
///   maps            [0..k-1][0..v-1]  in: component maps
///   coordinates     [0..v-1][0..2]    in: grid position of each voxel
///   zThreshold                        a voxel counts when its magnitude is strictly above
///   minClusterSize                    voxels that a cluster needs; see labelClusters
///   degree          [0..k-1]          out: 0 .. 1; NaN for a component without a supra-threshold voxel
void clusteringDegree(const float* const* maps, const int* const* coordinates, int k, int v, float zThreshold,
                      int minClusterSize, float* degree);

} // namespace zn
