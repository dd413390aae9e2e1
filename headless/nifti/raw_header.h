#pragma once

#include <array>
#include <cstdint>
#include <filesystem>

namespace zn::headless {

/// Fields of a NIfTI header as stored in the file, in this machine's byte order. When it reads an image, the library
/// changes extents and voxel sizes of 0 to 1 and thereby hides damaged headers and missing repetition times.
struct RawHeader {
    std::array<std::int64_t, 8> dim{};
    std::array<double, 8> pixdim{};
    std::int64_t dataOffset = 0; ///< bytes before the data
    bool separateData = false;   ///< in an .img file
};

/// Reads the header of a NIfTI-1 or NIfTI-2 file (or of an ANALYZE 7.5 one) in either byte order without the library,
/// which trusts what it reads: an impossible number of axes makes it write beyond its arrays.
///
/// Throws Failure (kInput) naming the file unless there are 1 to 7 axes of at least one element each, a data type that
/// exists, an affine of finite numbers where its code says that there is one, finite voxel sizes, and data that begin
/// at a byte that can be addressed.
RawHeader readRawHeader(const std::filesystem::path& file);

} // namespace zn::headless
