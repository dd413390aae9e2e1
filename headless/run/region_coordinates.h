#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// The voxels of a region as the host passes them: three coordinates each.
///
///   voxels  linear indices, x fastest, into a grid that begins at 0 with voxels of size 1
///   space   kCentredSpace (3): the host's coordinates, which decrease from 128, with permuted axes:
///           (128 - z, 128 - x, 128 - y); anything else: (x, y, z) as they are
std::vector<std::int32_t> regionCoordinates(const std::vector<std::int64_t>& voxels, const std::array<int, 3>& size,
                                            std::int32_t space);

} // namespace zn::headless
