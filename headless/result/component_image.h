#pragma once

#include "headless/host/volume_maps.h"
#include "headless/nifti/image_header.h"

#include <filesystem>

namespace zn::headless {

/// Writes the component maps as one 4D image of single precision, component after component, on the grid of the
/// functional image. Throws Failure (kOther).
void writeComponentImage(const std::filesystem::path& file, const VolumeMaps& maps, const ImageHeader& functional);

} // namespace zn::headless
