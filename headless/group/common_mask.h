#pragma once

#include <cstdint>
#include <vector>

namespace zn::headless {

/// The voxels that all runs of a study have.
struct CommonMask {
    std::vector<unsigned char> voxels; ///< [voxel of the grid]: 1 inside
    std::int64_t count = 0;
    std::int64_t median = 0;           ///< voxels in the runs' own masks
    std::vector<std::int64_t> lacking; ///< [run]: voxels that it lacks although at least half of the runs have them
};

///   masks   [run][voxel of the grid], at least one run
CommonMask commonMask(const std::vector<std::vector<bool>>& masks);

} // namespace zn::headless
