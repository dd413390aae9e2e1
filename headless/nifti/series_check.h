#pragma once

#include "headless/nifti/time_series.h"

#include <cstdint>
#include <vector>

namespace zn {

/// True when at least one voxel of the mask (of all voxels when the mask is empty) changes over time. Stops at the first
/// one, so it costs next to nothing on data that can be analysed.
bool variesOverTime(const TimeSeries& series, const std::vector<unsigned char>& mask);

/// How many voxels of the mask hold a value that is not finite in any volume.
std::int64_t voxelsNotFinite(const TimeSeries& series, const std::vector<unsigned char>& mask);

} // namespace zn
