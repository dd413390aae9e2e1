#pragma once

#include "headless/nifti/image_header.h"

#include <cstdint>
#include <map>
#include <vector>

namespace zn::headless {

/// Reads a label image: for every label other than 0, in ascending order, its voxels as linear indices (x fastest) in
/// ascending order. Throws Failure (kInput), also for values that are no whole numbers and for an image of zeros.
std::map<std::int32_t, std::vector<std::int64_t>> readLabels(const ImageHeader& header);

} // namespace zn::headless
