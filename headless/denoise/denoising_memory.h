#pragma once

#include "headless/nifti/image_header.h"

#include <algorithm>
#include <cstdint>

namespace zn::headless {

/// Threads that compress the cleaned image, at most: each needs 32 MiB, and more of them than this do not help much.
inline constexpr int kMostCompressing = 4;

/// The peak memory of denoising an image, in bytes: the series in single precision, the volumes that are read or
/// written together, what is being compressed, the maps, and the process itself.
inline std::int64_t denoisingBytes(const ImageHeader& image) {
    constexpr std::int64_t kTogether = 32;
    constexpr std::int64_t kMapBytes = 40; // per voxel
    constexpr std::int64_t kProcess = std::int64_t{64} << 20;
    constexpr std::int64_t kCompressing = std::int64_t{kMostCompressing} * (32 << 20);
    const std::int64_t series = 4 * image.voxels() * image.volumes;
    return series + std::min(series, kCompressing) + image.voxels() * (4 * kTogether + kMapBytes) + kProcess;
}

} // namespace zn::headless
