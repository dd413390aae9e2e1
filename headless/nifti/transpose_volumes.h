#pragma once

#include <cstdint>

namespace zn::headless {

/// Copies a few consecutive volumes into a series whose time courses are stored voxel after voxel.
///
///   volumes   [count][voxels] in: volume after volume
///   series    [voxels][length] out: element v * length + first + c receives volume c of voxel v, converted to Value
///
/// Processes the voxels in blocks, so that every fetched cache line is used completely before it is evicted. With as
/// many volumes at a time as fill a cache line of the output (64 bytes), only complete lines are written.
template <class Read, class Value>
void transposeVolumes(const Read* volumes, int count, std::int64_t voxels, Value* series, int length, int first) {
    constexpr std::int64_t kBlock = 512; // voxels; times 32 volumes of 2 bytes: 32 KiB, the first-level cache
    for (std::int64_t start = 0; start < voxels; start += kBlock) {
        const std::int64_t end = start + kBlock < voxels ? start + kBlock : voxels;
        for (std::int64_t v = start; v < end; ++v) {
            Value* target = series + v * length + first;
            for (int c = 0; c < count; ++c) target[c] = static_cast<Value>(volumes[c * voxels + v]);
        }
    }
}

} // namespace zn::headless
