#include "headless/nifti/image_header.h"

#include "headless/nifti/quiet_library.h"
#include "headless/nifti/raw_header.h"
#include "headless/text/input_file.h"

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

// Bytes of the entire image, or nothing when the product overflows 64 bits.
std::optional<std::int64_t> dataBytes(const nifti_image& image) {
    std::int64_t bytes = image.nbyper;
    for (int axis = 1; axis <= 7; ++axis) {
        const std::int64_t extent = axis <= image.ndim ? image.dim[axis] : 1;
        if (__builtin_mul_overflow(bytes, extent, &bytes)) return std::nullopt;
    }
    return bytes;
}

void checkExtents(const fs::path& file, const nifti_image& image) {
    std::int64_t voxels = 1;
    for (int axis = 1; axis <= 4; ++axis) {
        const std::int64_t extent = axis <= image.ndim ? image.dim[axis] : 1;
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

double millimetresPerUnit(int unit) {
    if (unit == NIFTI_UNITS_METER) return 1e3;
    if (unit == NIFTI_UNITS_MICRON) return 1e-3;
    return 1.0; // millimetres, or no unit given
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
    const RawHeader raw = readRawHeader(file); // before the library, which trusts what it reads
    auto image = readImage(file);
    if (!image || !image->iname)
        refuseFile(file, "is not a NIfTI image (.nii, .nii.gz, or .hdr with .img), or is damaged.");
    checkExtents(file, *image);
    checkLength(file, *image, raw);

    ImageHeader header;
    header.file = file;
    header.size = {static_cast<int>(image->nx), static_cast<int>(image->ny), static_cast<int>(image->nz)};
    header.volumes = static_cast<int>(image->nt);
    header.affine = affineOf(*image);
    header.oriented = image->sform_code > 0 || image->qform_code > 0;
    header.secondsPerVolume = secondsPerVolume(*image, raw);
    header.image = std::move(image);
    return header;
}

std::string sizeText(const ImageHeader& header) {
    return std::to_string(header.size[0]) + "x" + std::to_string(header.size[1]) + "x" + std::to_string(header.size[2]);
}

} // namespace zn::headless
