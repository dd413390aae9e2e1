#pragma once

#include <optional>
#include <vector>

namespace zn::headless {

/// The intensity that separates the head from the air around it: half the median of the voxels above it, which hardly
/// depends on the amount of air as long as that is at most nineteen in twenty voxels. Found by iteration from half the
/// root mean square of the positive values, computed with the brightest 2 % clipped to the 98th percentile so that
/// vessels and spikes do not raise it. Zeros do not count, so an image that is already masked has no air; values below
/// half of its median still lie below the threshold.
///
/// Nothing when the values are not intensities: more than a tenth of the nonzero ones are negative, as after removal of
/// the temporal mean, or none is positive. Non-finite values are ignored.
std::optional<float> intensityThreshold(const std::vector<float>& values);

} // namespace zn::headless
