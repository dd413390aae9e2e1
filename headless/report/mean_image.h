#pragma once

#include "headless/nifti/image_header.h"

#include <filesystem>
#include <vector>

namespace zn::headless {

/// Writes the mean image of a run, x fastest, on the grid of the functional image. Throws Failure (kOther).
void writeMeanImage(const std::filesystem::path& file, const std::vector<float>& mean, const ImageHeader& functional);

/// Shades of grey for display: 0 at and below zero, 255 at and above the 99.5th percentile of the positive values.
std::vector<unsigned char> greyLevels(const std::vector<float>& mean);

} // namespace zn::headless
