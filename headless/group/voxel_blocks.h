#pragma once

#include <cstddef>
#include <cstdint>

namespace zn::headless {

/// Products over all voxels are computed block by block: one block of every row stays in the cache.
constexpr std::int64_t kVoxelsPerBlock = 2048;

/// The number of blocks, of which the last may be smaller.
inline int blocksIn(std::int64_t voxels) {
    return static_cast<int>((voxels + kVoxelsPerBlock - 1) / kVoxelsPerBlock);
}

/// The number of elements of a x b.
inline std::size_t product(std::int64_t a, std::int64_t b) {
    return static_cast<std::size_t>(a * b);
}

} // namespace zn::headless
