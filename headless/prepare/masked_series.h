#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// Single-precision time courses on a grid, and the voxels of them that matter; a view of both. The courses are stored
/// voxel after voxel: element v * volumes + t, with v = (z * size[1] + y) * size[0] + x.
struct MaskedSeries {
    float* values;
    int volumes;
    std::array<int, 3> size;                ///< voxels along x, y, z
    const std::vector<unsigned char>& mask; ///< one byte per voxel of the grid; nonzero: inside

    std::int64_t voxels() const { return std::int64_t{1} * size[0] * size[1] * size[2]; }
    float* course(std::int64_t voxel) const { return values + voxel * volumes; }
    bool has(std::int64_t voxel) const { return mask[static_cast<std::size_t>(voxel)] != 0; }
};

} // namespace zn::headless
