#pragma once

#include "headless/nifti/image_header.h"

#include <vector>

namespace zn::headless {

/// Reads a mask: 1 where the image is different from zero, 0 where it is zero or not a number; x fastest.
/// Throws Failure (kInput), also when no voxel is selected.
std::vector<unsigned char> readMask(const ImageHeader& header);

} // namespace zn::headless
