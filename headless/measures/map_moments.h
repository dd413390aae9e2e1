#pragma once

#include <span>
#include <vector>

namespace zn::headless {

/// The shape of the distribution of a map's values, not rescaled: skewness m3 / m2^1.5 and excess kurtosis
/// m4 / m2^2 - 3, where m_p is the mean of (value - mean)^p. Both are 0 for a normal distribution, and NaN for a
/// constant map or one with non-finite values.
struct MapMoments {
    double skewness;
    double kurtosis;
};

///   map    one value per voxel of the grid
///   mask   one byte per voxel of the grid; voxels where it is 0 do not count
MapMoments momentsOf(std::span<const float> map, const std::vector<unsigned char>& mask);

} // namespace zn::headless
