#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <nifti2_io.h>

namespace zn::headless {

/// Voxel (i, j, k), counted from 0, to millimetres: rows x, y, z; columns i, j, k, offset.
using Affine = std::array<std::array<double, 4>, 3>;

/// The validated header of a NIfTI file: every count is at least 1, the grid has fewer than 2^31 voxels, and the file
/// is large enough to hold the image that its header describes.
struct ImageHeader {
    std::filesystem::path file;               ///< as the user named it
    std::array<int, 3> size{};                ///< voxels along x, y, z
    int volumes = 1;                          ///< images along the fourth axis
    Affine affine{};                          ///< sform, else qform, else only the voxel sizes; millimetres
    bool oriented = true;                     ///< has a sform or qform: the affine says where left and right are
    std::optional<double> secondsPerVolume;   ///< from the fourth voxel size and its unit; no unit counts as seconds
    bool timeUnit = false;                    ///< the header says in which unit its repetition time is
    std::shared_ptr<const nifti_image> image; ///< the header as read, without voxel data

    std::int64_t voxels() const { return std::int64_t{1} * size[0] * size[1] * size[2]; }
};

/// Reads the header of a NIfTI-1 or NIfTI-2 image, compressed or not. Throws Failure (kInput) naming the file.
ImageHeader readImageHeader(const std::filesystem::path& file);

/// "64x64x33"
std::string sizeText(const ImageHeader& header);

} // namespace zn::headless
