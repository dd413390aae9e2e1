#pragma once

#include "headless/nifti/image_header.h"

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace zn::headless {

/// Reads a 3D image as single-precision values, x fastest. Throws Failure (kInput), also for more than one volume.
std::vector<float> readSingleVolume(const ImageHeader& header);

/// Reads volume `index`, from 0, of an image in the same way; the volumes before it are read and discarded.
std::vector<float> readVolume(const ImageHeader& header, int index);

/// Reads all volumes of an image as single-precision values, [volume][voxel]. Throws Failure (kInput).
std::vector<float> readAllVolumes(const ImageHeader& header);

/// The same one after another, with one of them in memory.
void forEachVolume(const ImageHeader& header, const std::function<void(const std::vector<float>&)>& use);

/// Reads a mask: 1 where the image is nonzero, 0 where it is zero or NaN; x fastest. Throws Failure (kInput), also when
/// no voxel is selected.
std::vector<unsigned char> readMask(const ImageHeader& header);

/// Reads a label image: for every label other than 0, in ascending order, its voxels as linear indices (x fastest) in
/// ascending order. Throws Failure (kInput), also for values that are not whole numbers and for an image of zeros.
std::map<std::int32_t, std::vector<std::int64_t>> readLabels(const ImageHeader& header);

} // namespace zn::headless
