#pragma once

#include "headless/nifti/image_header.h"

#include <string>

namespace zn::headless {

/// Throws Failure (kInput), with sizes and affines of both, unless the voxels of the two images are the same places:
/// equal sizes, and no corner of the grid further apart than a hundredth of the smallest voxel edge, which lets the
/// rounding of other programs pass.
///
///   what   what the first image is, for the text: "mask"
void requireSameGrid(const std::string& what, const ImageHeader& image, const ImageHeader& reference);

} // namespace zn::headless
