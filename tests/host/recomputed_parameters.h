#pragma once

#include <vector>

namespace zn::test {

using Rows = std::vector<std::vector<double>>;

/// The table of "ParamsMatrix.txt" worked out anew from what a run leaves behind, in double precision and straight from
/// the definitions: no code is shared with the plug-in.
///
///   maps          one row a component, values of the selected voxels in grid order
///   coordinates   grid x, y, z of these voxels
///   timeCourses   one row a component, as in the RTC file
///   trSeconds     whole seconds
///
/// Returns one row of eleven values a component: degree of clustering over its largest value, skewness, kurtosis,
/// spatial entropy, lag-1 autocorrelation, temporal entropy, five frequency bands.
Rows recomputedParameters(const Rows& maps, const std::vector<std::vector<int>>& coordinates, const Rows& timeCourses,
                          int trSeconds, double zThreshold, int minClusterSize);

/// The column of temporal entropies anew. Whether the largest value of a time course falls into the last bin or beyond
/// all of them hangs on the rounding of values that the RTC file does not hold: bit k of `lost` says that component k's
/// does not count.
std::vector<double> temporalEntropies(const Rows& timeCourses, unsigned lost);

} // namespace zn::test
