#pragma once

#include "headless/nifti/time_series.h"

#include <vector>

namespace zn::headless {

/// The volumes of a series, counted from 0 in ascending order, in which no voxel has a finite value. Voxels outside
/// TimeSeries::inside do not count.
std::vector<int> volumesWithoutValues(const TimeSeries& series);

} // namespace zn::headless
