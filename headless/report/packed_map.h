#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zn::headless {

/// A component map in decimal steps, small enough for a page and exact in what the page shows: every value is rounded
/// once, here, to the digits that are displayed, so those are the digits of the map file.
struct PackedMap {
    int decimals = 0;  ///< a stored number n stands for n / 10^decimals
    double lowest = 0; ///< of the finite values, before rounding; 0 when there is none
    double highest = 0;

    /// Per voxel a 16-bit number, first all low bytes, then all high bytes, which packs better than side by side.
    /// Each number is the difference from the voxel before, modulo 2^16: smooth maps have small ones. -32768 (before
    /// differencing) marks a voxel without a finite value.
    std::vector<std::byte> bytes;
};

/// Packs the values of the voxels inside the mask.
///
///   digits   decimals wanted for values around 1; maps on another scale get as many significant digits, and wide
///            ranges fewer, so that the largest magnitude fits into 16 bits
PackedMap packMap(std::span<const float> values, int digits);

} // namespace zn::headless
