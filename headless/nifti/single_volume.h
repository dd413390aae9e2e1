#pragma once

#include "headless/nifti/image_header.h"

#include <vector>

namespace zn::headless {

/// Reads a 3D image as single-precision values, x fastest. Throws Failure (kInput), also for more than one volume.
std::vector<float> readSingleVolume(const ImageHeader& header);

/// Reads volume `index`, from 0, of an image in the same way; what lies before it is read and dropped.
std::vector<float> readVolume(const ImageHeader& header, int index);

/// Reads all volumes of an image as single-precision values, [volume][voxel]. Throws Failure (kInput).
std::vector<float> readAllVolumes(const ImageHeader& header);

} // namespace zn::headless
