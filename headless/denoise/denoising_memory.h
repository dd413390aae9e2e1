#pragma once

#include "headless/nifti/image_header.h"

#include <cstdint>

namespace zn::headless {

/// The peak memory of denoising an image, in bytes: the series in single precision, the volumes that are read or
/// written together, the maps, and the process itself.
inline std::int64_t denoisingBytes(const ImageHeader& image) {
    constexpr std::int64_t kTogether = 32;
    constexpr std::int64_t kMapBytes = 40; // per voxel
    constexpr std::int64_t kProcess = std::int64_t{64} << 20;
    return image.voxels() * (4 * (image.volumes + kTogether) + kMapBytes) + kProcess;
}

} // namespace zn::headless
