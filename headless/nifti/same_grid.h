#pragma once

#include "headless/nifti/image_header.h"

#include <string>

namespace zn::headless {

/// Throws Failure (kInput), with sizes and affines of both, unless the voxels of the two images coincide: equal sizes,
/// and every corner of the grid within a hundredth of the smallest voxel edge, which tolerates the rounding of other
/// programs.
///
///   what   name of the first image in the message: "mask"
void requireSameGrid(const std::string& what, const ImageHeader& image, const ImageHeader& reference);

} // namespace zn::headless
