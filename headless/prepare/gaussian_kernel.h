#pragma once

#include <vector>

namespace zn::headless {

/// The Gaussian at distances 0, 1, 2, ... voxels up to four standard deviations, rounded to whole voxels, scaled so
/// that the weights on both sides add up to 1. A sigma of 0 gives the single weight 1.
///
///   sigma   standard deviation in voxels, at least 0
std::vector<float> gaussianKernel(double sigma);

} // namespace zn::headless
