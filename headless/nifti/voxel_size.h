#pragma once

#include "headless/nifti/image_header.h"

#include <array>

namespace zn::headless {

/// The distances between neighbouring voxels along x, y, z of the grid in millimetres.
std::array<double, 3> voxelSize(const ImageHeader& header);

} // namespace zn::headless
