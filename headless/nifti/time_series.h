#pragma once

#include "headless/nifti/image_header.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zn::headless {

/// The functional data in the host's order: all volumes of a voxel are contiguous, voxel (x, y, z) of the grid at index
/// z * (dimX * dimY) + y * dimX + x, so element voxel * volumes + t. Exactly one of the two arrays exists.
struct TimeSeries {
    std::int64_t voxels = 0;
    int volumes = 0;
    std::unique_ptr<std::int16_t[]> shorts; ///< signed 16-bit data as stored
    std::unique_ptr<float[]> floats;        ///< all other stored types, and scaled data
    std::vector<unsigned char> inside = {}; ///< [voxels], 0: the voxel's values are undefined; empty: none are
    std::vector<double> sums = {};          ///< [voxels], over the volumes; none if `inside` is empty

    bool isFloat() const { return floats != nullptr; }
};

/// True for data that readTimeSeries() keeps as signed 16-bit values.
bool staysShort(const nifti_image& image);

/// Reads and transposes a 4D image. Unscaled signed 16-bit data stay as they are; everything else becomes single
/// precision. Besides the result, this needs memory for twice as many volumes as fill a cache line (32 or 16): some are
/// read while others are transposed. Throws Failure (kInput), or std::bad_alloc when the series does not fit into
/// memory.
///
///   skip      number of volumes to omit at the beginning, fewer than the image has
///   asFloat   convert signed 16-bit values too
///   inside    one byte per voxel: 0 if its values are not needed, which saves the memory; empty: all are needed
TimeSeries readTimeSeries(const ImageHeader& header, int skip = 0, bool asFloat = false,
                          std::vector<unsigned char> inside = {});

} // namespace zn::headless
