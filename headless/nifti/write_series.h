#pragma once

#include "headless/nifti/image_header.h"

#include <cstdint>
#include <filesystem>

namespace zn::headless {

/// Writes time courses, stored voxel after voxel, as a 4D single-precision image on the grid of another one. Volumes
/// are transposed while the earlier ones are compressed, a cache line of volumes (16) at a time.
///
///   series             element v * volumes + t, x fastest
///   like               grid, orientation and description
///   secondsPerVolume   repetition time for the header
///   threads            that compress; the file does not depend on their number
///
/// Throws Failure (kOther) when the file cannot be written completely.
void writeSeries(const std::filesystem::path& file, const float* series, int volumes, const ImageHeader& like,
                 double secondsPerVolume, int threads = 1);

} // namespace zn::headless
