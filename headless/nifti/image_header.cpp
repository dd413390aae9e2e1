#include "headless/nifti/image_header.h"

#include "headless/nifti/millimetres_per_unit.h"
#include "headless/nifti/quiet_library.h"
#include "headless/nifti/raw_header.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// A deflated file is at least this fraction of what it inflates to (zlib's documented limit is 1032 to 1).
constexpr std::int64_t kMaxInflation = 1040;

std::shared_ptr<nifti_image> readImage(const fs::path& file) {
    const QuietLibrary quiet;
    return {nifti_image_read(file.c_str(), 0), [](nifti_image* image) {
                if (image) nifti_image_free(image);
            }};
}

// Elements along an axis. Beyond the image's own axes the library leaves what the file holds there, which may be 0.
std::int64_t extentOf(const nifti_image& image, int axis) {
    return axis <= image.ndim ? image.dim[axis] : 1;
}

// Bytes of the entire image, or nothing when the product overflows 64 bits.
std::optional<std::int64_t> dataBytes(const nifti_image& image) {
    std::int64_t bytes = image.nbyper;
    for (int axis = 1; axis <= 7; ++axis) {
        if (__builtin_mul_overflow(bytes, extentOf(image, axis), &bytes)) return std::nullopt;
    }
    return bytes;
}

void checkExtents(const fs::path& file, const nifti_image& image) {
    std::int64_t voxels = 1;
    for (int axis = 1; axis <= 4; ++axis) {
        const std::int64_t extent = extentOf(image, axis);
        if (extent > std::numeric_limits<std::int32_t>::max() ||
            (axis < 4 && __builtin_mul_overflow(voxels, extent, &voxels)) ||
            voxels > std::numeric_limits<std::int32_t>::max()) {
            refuseFile(file,
                       "has a grid of more than 2147483647 voxels, which is beyond what the analysis can address.");
        }
    }
    for (int axis = 5; axis <= image.ndim; ++axis) {
        if (image.dim[axis] != 1) {
            refuseFile(file,
                       "has " + std::to_string(image.ndim) + " axes; only images with up to four axes can be used.");
        }
    }
}

void checkLength(const fs::path& file, const nifti_image& image, const RawHeader& raw) {
    const auto bytes = dataBytes(image);
    std::error_code error;
    const auto length = static_cast<std::int64_t>(fs::file_size(image.iname, error));
    if (error) {
        refuseFile(file, "has no image data beside its header (" + std::string(image.iname) + " cannot be read).");
    }
    if (!raw.separateData && image.iname_offset < raw.dataOffset) {
        refuseFile(file, "has a damaged header: its data cannot begin at byte " + std::to_string(raw.dataOffset) + ".");
    }
    const bool compressed = nifti_is_gzfile(image.iname) != 0;
    const std::int64_t most = compressed ? length * kMaxInflation : length - image.iname_offset;
    if (!bytes || *bytes > most) {
        refuseFile(file,
                   "is too short for the image that its header describes; it is truncated or its header is wrong.");
    }
}

Affine affineOf(const nifti_image& image) {
    Affine affine{};
    const double scale = millimetresPerUnit(image.xyz_units);
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            const auto& m = image.sform_code > 0 ? image.sto_xyz : image.qto_xyz; // without codes: only voxel sizes
            affine[row][column] = scale * m.m[row][column];
        }
    }
    return affine;
}

// Whether a result can have this geometry: in millimetres and in single precision. Finite values of the header may
// still be too large for that.
bool isStorable(const nifti_image& image) {
    const auto fits = [scale = millimetresPerUnit(image.xyz_units)](double value) {
        return std::fabs(scale * value) <= static_cast<double>(std::numeric_limits<float>::max()); // false for NaN
    };
    const auto rowsFit = [&](const auto& matrix) {
        return std::all_of(matrix.m, matrix.m + 3, [&](const auto& row) { return std::all_of(row, row + 4, fits); });
    };
    const bool quaternionFits = fits(image.quatern_b) && fits(image.quatern_c) && fits(image.quatern_d);
    return fits(image.dx) && fits(image.dy) && fits(image.dz) &&
           (image.qform_code <= 0 || (quaternionFits && rowsFit(image.qto_xyz))) &&
           (image.sform_code <= 0 || rowsFit(image.sto_xyz));
}

std::optional<double> secondsPerVolume(const nifti_image& image, const RawHeader& raw) {
    double seconds = image.ndim >= 4 ? raw.pixdim[4] : 0.0;
    if (image.time_units == NIFTI_UNITS_MSEC) seconds *= 1e-3;
    if (image.time_units == NIFTI_UNITS_USEC) seconds *= 1e-6;
    const bool otherQuantity = image.time_units == NIFTI_UNITS_HZ || image.time_units == NIFTI_UNITS_PPM ||
                               image.time_units == NIFTI_UNITS_RADS;
    if (otherQuantity || !std::isfinite(seconds) || seconds <= 0.0) return std::nullopt;
    return seconds;
}

} // namespace

ImageHeader readImageHeader(const fs::path& file) {
    requireReadable(file);
    std::error_code error;
    if (fs::file_size(file, error) == 0 && !error) refuseFile(file, "is empty; export or copy the image again.");
    const RawHeader raw = readRawHeader(file); // before the library, which trusts what it reads
    auto image = readImage(file);
    if (!image || !image->iname)
        refuseFile(file, "is not a NIfTI image (.nii, .nii.gz, or .hdr with .img), or is damaged.");
    checkExtents(file, *image);
    checkLength(file, *image, raw);
    if (!isStorable(*image)) {
        refuseFile(
            file, "has a damaged header: its affine or its voxel sizes are too large; export or copy the image again.");
    }

    ImageHeader header;
    header.file = file;
    for (int axis = 1; axis <= 3; ++axis) {
        header.size[static_cast<std::size_t>(axis) - 1] = static_cast<int>(extentOf(*image, axis));
    }
    header.volumes = static_cast<int>(extentOf(*image, 4));
    header.affine = affineOf(*image);
    header.oriented = image->sform_code > 0 || image->qform_code > 0;
    header.secondsPerVolume = secondsPerVolume(*image, raw);
    header.timeUnit = image->time_units != NIFTI_UNITS_UNKNOWN;
    header.image = std::move(image);
    return header;
}

std::string sizeText(const ImageHeader& header) {
    return std::to_string(header.size[0]) + "x" + std::to_string(header.size[1]) + "x" + std::to_string(header.size[2]);
}

} // namespace zn::headless
