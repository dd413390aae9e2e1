#pragma once

#include "headless/nifti/time_series.h"

#include <cstdint>
#include <vector>

namespace zn::headless {

/// What the time course of every voxel comes to; voxels as in the series, x fastest.
struct VoxelSummary {
    std::vector<float> mean;             ///< of the values that are finite; 0 where none is
    std::vector<unsigned char> finite;   ///< 1: all values are finite
    std::vector<unsigned char> constant; ///< 1: all values are finite and the same
};

/// One pass over the series; 6 bytes a voxel.
VoxelSummary summariseVoxels(const TimeSeries& series);

/// Voxels that left a mask.
struct LeftVoxels {
    std::int64_t notFinite = 0;
    std::int64_t constant = 0;

    std::int64_t all() const { return notFinite + constant; }
};

/// Takes the voxels out of the mask that hold a value that is not finite in any volume, or that never change.
LeftVoxels removeUnusable(const VoxelSummary& summary, std::vector<unsigned char>& mask);

} // namespace zn::headless
