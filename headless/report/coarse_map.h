#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zn::headless {

/// A map in few steps, for a page with so many maps that they cannot all be exact.
struct CoarseMap {
    /// The distance between two values: 0.2, or, for magnitudes above 25.4, the next multiple of 0.1 with which 127
    /// steps reach the largest one. Values are off by half of it at most.
    double step = 0.2;

    /// One 8-bit number per voxel: the difference from the previous voxel in steps, modulo 2^8. -128 (before
    /// differencing) marks a voxel without a finite value.
    std::vector<std::byte> bytes;
};

/// Packs the values of the voxels inside the mask.
CoarseMap packCoarsely(std::span<const float> values);

} // namespace zn::headless
