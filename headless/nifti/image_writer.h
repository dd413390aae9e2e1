#pragma once

#include "headless/compression/deflating_file.h"
#include "headless/nifti/image_header.h"

#include <cstdint>
#include <filesystem>
#include <span>

namespace zn::headless {

/// Writes a NIfTI-1 file volume by volume; compressed at a fast level where the name ends in ".gz", because the noise
/// in functional data and maps hardly compresses further. Units are millimetres and seconds.
class ImageWriter {
public:
    static constexpr int kMostElements = 32767; ///< along an axis, also that of the volumes: NIfTI-1 has 16 bits for it

    struct Layout {
        int volumes = 1;
        int dataType = NIFTI_TYPE_FLOAT32; ///< NIFTI_TYPE_FLOAT32, NIFTI_TYPE_INT16 or NIFTI_TYPE_UINT8
        double secondsPerVolume = 0.0;     ///< 0: the fourth axis is not time
        const char* description = "";      ///< at most 79 characters
        int threads = 1;                   ///< see DeflatingFile
    };

    /// The grid, including sform and qform with their codes, is copied from the given header. Throws Failure (kOther).
    ImageWriter(const std::filesystem::path& file, const nifti_image& grid, const Layout& layout);

    /// The next volume, x fastest; the element type is the layout's. Throws Failure (kOther) on a full disk.
    void write(std::span<const float> volume) { writeBytes(std::as_bytes(volume)); }
    void write(std::span<const std::int16_t> volume) { writeBytes(std::as_bytes(volume)); }
    void write(std::span<const unsigned char> volume) { writeBytes(std::as_bytes(volume)); }

    /// Completes the file after the last volume. Throws Failure (kOther) when it cannot be written completely.
    void close();

private:
    void writeHeader(const nifti_image& image);
    void writeBytes(std::span<const std::byte> bytes);
    [[noreturn]] void fail() const;

    std::filesystem::path file_;
    DeflatingFile stream_;
};

/// A header for a new grid: voxels of `edge` millimetres with the centre of the grid at the origin, sform and qform
/// with code 1 (scanner).
std::shared_ptr<nifti_image> newGrid(const std::array<int, 3>& size, double edge);

} // namespace zn::headless
