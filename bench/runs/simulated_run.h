#pragma once

#include "numeric/array_owners.h"

namespace zn::bench {

/// A functional run whose sources are known. K sources, T volumes, V voxels.
struct SimulatedRun {
    ZeroedBlock data;              ///< X, V x T, row-major, every volume's mean over the voxels removed
    OffsetMatrix<float> sources;   ///< [0..K-1][0..V-1]
    OffsetMatrix<int> coordinates; ///< [0..V-1][0..2], grid x y z from 0
};

/// Two Gaussian blobs per source, cut off where they fade, on a cubic grid that is filled in voxel order; a time course
/// per source of slow autoregressive noise and a block design; white noise of unit variance in every voxel and volume.
/// Equal arguments give equal data with the same standard library.
SimulatedRun simulateRun(int voxels, int volumes, int sources, unsigned seed);

} // namespace zn::bench
