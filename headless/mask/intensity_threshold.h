#pragma once

#include <optional>
#include <vector>

namespace zn::headless {

/// The intensity that separates the head from the air around it: half the median of the voxels above it, which is what
/// the head's own bright voxels agree on however much air there is, up to nineteen in twenty voxels. Found by iteration
/// from half the root mean square of the positive values, taken after the brightest 2 % are cut to the 98th percentile
/// so that vessels and spikes do not raise it. Where an image has no air (masked already: zeros do not count),
/// everything lies above it.
///
/// Nothing when the values are no intensities: more than a tenth of those that are not zero are negative, as after the
/// temporal mean was removed, or none is positive. Values that are not finite are passed over.
std::optional<float> intensityThreshold(const std::vector<float>& values);

} // namespace zn::headless
