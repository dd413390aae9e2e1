#pragma once

#include <vector>

namespace zn::test {

using Rows = std::vector<std::vector<double>>;

/// The table of "ParamsMatrix.txt" recomputed from the files of a run, in double precision and directly from the
/// definitions: no code is shared with the plug-in.
///
///   maps          one row per component, values of the selected voxels in grid order
///   coordinates   grid x, y, z of these voxels
///   timeCourses   one row per component, as in the RTC file
///   trSeconds     whole seconds
///
/// Returns one row of eleven values per component: degree of clustering divided by its largest value, skewness,
/// kurtosis, spatial entropy, lag-1 autocorrelation, temporal entropy, five frequency bands.
Rows recomputedParameters(const Rows& maps, const std::vector<std::vector<int>>& coordinates, const Rows& timeCourses,
                          int trSeconds, double zThreshold, int minClusterSize);

/// The column of temporal entropies, recomputed. Whether the largest value of a time course falls into the last bin or
/// beyond it depends on the rounding of values that the RTC file does not hold: bit k of `lost` says that component k's
/// is not counted.
std::vector<double> temporalEntropies(const Rows& timeCourses, unsigned lost);

} // namespace zn::test
