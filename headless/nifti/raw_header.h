#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// Fields of a NIfTI header as they stand in the file, in this machine's byte order. The library repairs extents and
/// voxel sizes of 0 to 1 when it reads an image, and with that hides a damaged header and a missing repetition time.
struct RawHeader {
    std::array<std::int64_t, 8> dim{};
    std::array<double, 8> pixdim{};
};

/// Nothing when the file has no header that the library recognises.
std::optional<RawHeader> readRawHeader(const std::filesystem::path& file);

} // namespace zn::headless
