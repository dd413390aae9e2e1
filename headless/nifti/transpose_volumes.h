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

/// The same for the voxels inside alone, and adds up the values of every voxel.
///
///   inside   [voxels]; 0: the voxel's elements of the series stay as they are
///   sums     [voxels] in and out: increased by the voxel's values, in the order of the volumes
template <class Read, class Value>
void transposeInside(const Read* volumes, int count, std::int64_t voxels, const unsigned char* inside, Value* series,
                     int length, int first, double* sums) {
    constexpr std::int64_t kBlock = 512;
    for (std::int64_t start = 0; start < voxels; start += kBlock) {
        const std::int64_t end = start + kBlock < voxels ? start + kBlock : voxels;
        for (int c = 0; c < count; ++c) {
            for (std::int64_t v = start; v < end; ++v) sums[v] += static_cast<double>(volumes[c * voxels + v]);
        }
        for (std::int64_t v = start; v < end; ++v) {
            if (inside[v] == 0) continue;
            Value* target = series + v * length + first;
            for (int c = 0; c < count; ++c) target[c] = static_cast<Value>(volumes[c * voxels + v]);
        }
    }
}

} // namespace zn::headless
