#pragma once

#include <cstdint>

namespace zn::headless {

/// Whitened data: n rows, one per retained eigenvalue, over V voxels.
struct WhitenedVoxels {
    const double* z; ///< n x V, row-major
    int dimension;   ///< n
    int voxels;      ///< V

    const double* row(int k) const { return z + std::int64_t{k} * voxels; }
};

} // namespace zn::headless
