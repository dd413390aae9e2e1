#pragma once

#include "headless/nifti/image_header.h"

#include <array>

namespace zn::headless {

/// Over the axes of the grid with more than one voxel; 0 if there are none.
double geometricMean(const std::array<double, 3>& widths, const std::array<int, 3>& grid);

/// Full width at half maximum, in millimetres, to which --smooth auto smooths: 1.5 voxels.
double automaticWidth(const ImageHeader& image);

/// The standard deviations along x, y, z, in voxels, of a Gaussian of that full width at half maximum.
std::array<double, 3> sigmaInVoxels(double millimetres, const ImageHeader& image);

} // namespace zn::headless
