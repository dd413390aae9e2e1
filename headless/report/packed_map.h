#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zn::headless {

/// A component map in decimal steps, small enough for a page and exact in what the page shows: every value is rounded
/// only once, here, to the digits that are displayed, so the page shows the digits of the map file.
struct PackedMap {
    int decimals = 0;  ///< a stored number n stands for n / 10^decimals
    double lowest = 0; ///< of the finite values, before rounding; 0 when there are none
    double highest = 0;
    bool negativeTail = false; ///< the third central moment of the finite values is below 0

    /// One 16-bit number per voxel: first all low bytes, then all high bytes, which compresses better than interleaved
    /// bytes. Each number is the difference from the previous voxel, modulo 2^16, which is small in smooth maps. -32768
    /// (before differencing) marks a voxel without a finite value.
    std::vector<std::byte> bytes;
};

/// Packs the values of the voxels inside the mask.
///
///   digits   decimals wanted for values around 1; maps on another scale get as many significant digits, and wide
///            ranges fewer, so that the largest magnitude fits into 16 bits
PackedMap packMap(std::span<const float> values, int digits);

} // namespace zn::headless
