#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// Fields of a NIfTI header as stored in the file, in this machine's byte order. When it reads an image, the library
/// changes extents and voxel sizes of 0 to 1 and thereby hides damaged headers and missing repetition times.
struct RawHeader {
    std::array<std::int64_t, 8> dim{};
    std::array<double, 8> pixdim{};
};

/// Nothing when the library does not recognise the header.
std::optional<RawHeader> readRawHeader(const std::filesystem::path& file);

} // namespace zn::headless
