#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/nifti/time_series.h"

#include <cstdint>
#include <vector>

namespace zn::headless {

/// A summary of every voxel's time course; voxels as in the series, x fastest.
struct VoxelSummary {
    std::vector<float> mean;             ///< of the finite values; 0 where there are none
    std::vector<unsigned char> finite;   ///< 1: all values are finite
    std::vector<unsigned char> constant; ///< 1: all values are finite and the same
};

/// One pass over the series; 6 bytes per voxel. The same bits for any number of threads.
///
///   mask   one byte per voxel: the summary of a voxel with 0 is undefined, which saves reading most of them;
///          empty: all voxels are summarised
///
/// Only the sums are known of voxels outside TimeSeries::inside: their `constant` is undefined, and their mean is 0 if
/// any value is not finite.
VoxelSummary summariseVoxels(const TimeSeries& series, WorkerThreads& threads,
                             const std::vector<unsigned char>& mask = {});

/// Voxels excluded from a mask.
struct ExcludedVoxels {
    std::int64_t notFinite = 0;
    std::int64_t constant = 0;

    std::int64_t all() const { return notFinite + constant; }
};

/// Excludes from the mask the voxels that hold a non-finite value in any volume, or that never change.
ExcludedVoxels removeUnusable(const VoxelSummary& summary, std::vector<unsigned char>& mask);

} // namespace zn::headless
