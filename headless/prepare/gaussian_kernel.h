#pragma once

#include <vector>

namespace zn::headless {

/// Width at half the maximum of a Gaussian with standard deviation 1: 2 sqrt(2 ln 2).
inline constexpr double kFwhmOfUnitSigma = 2.3548200450309493;

/// The Gaussian at distances 0, 1, 2, ... voxels up to four standard deviations, rounded to whole voxels, scaled so
/// that the weights on both sides add up to 1. A sigma of 0 gives the single weight 1.
///
///   sigma   standard deviation in voxels, at least 0
std::vector<float> gaussianKernel(double sigma);

} // namespace zn::headless
