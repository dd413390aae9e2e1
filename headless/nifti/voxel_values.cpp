#include "headless/nifti/voxel_values.h"

#include "headless/failure/failure.h"

#include <cmath>
#include <cstring>
#include <type_traits>

namespace zn::headless {

namespace {

template <class Stored>
void convert(const std::byte* stored, std::int64_t count, double slope, double inter, bool scaled, float* values) {
    for (std::int64_t i = 0; i < count; ++i) {
        Stored value;
        std::memcpy(&value, stored + i * static_cast<std::int64_t>(sizeof(Stored)), sizeof(Stored));
        values[i] = scaled ? static_cast<float>(static_cast<double>(value) * slope + inter) : static_cast<float>(value);
    }
}

// Calls use(Stored{}) with the C++ type of a NIfTI type code; false for a type that does not hold real numbers.
template <class Use> bool withStoredType(int code, Use use) {
    switch (code) {
    case NIFTI_TYPE_UINT8:
        return use(std::uint8_t{}), true;
    case NIFTI_TYPE_INT8:
        return use(std::int8_t{}), true;
    case NIFTI_TYPE_UINT16:
        return use(std::uint16_t{}), true;
    case NIFTI_TYPE_INT16:
        return use(std::int16_t{}), true;
    case NIFTI_TYPE_UINT32:
        return use(std::uint32_t{}), true;
    case NIFTI_TYPE_INT32:
        return use(std::int32_t{}), true;
    case NIFTI_TYPE_UINT64:
        return use(std::uint64_t{}), true;
    case NIFTI_TYPE_INT64:
        return use(std::int64_t{}), true;
    case NIFTI_TYPE_FLOAT32:
        return use(float{}), true;
    case NIFTI_TYPE_FLOAT64:
        return use(double{}), true;
    default:
        return false;
    }
}

} // namespace

bool isScaled(const nifti_image& image) {
    const bool usable = std::isfinite(image.scl_slope) && std::isfinite(image.scl_inter) && image.scl_slope != 0.0;
    return usable && !(image.scl_slope == 1.0 && image.scl_inter == 0.0);
}

void requireRealNumbers(const ImageHeader& header) {
    if (withStoredType(header.image->datatype, [](auto) {})) return;
    throw Failure(ExitStatus::kInput, header.file.string() + " stores voxels of type " +
                                          nifti_datatype_to_string(header.image->datatype) +
                                          "; convert it to an integer or floating-point type.");
}

void toFloat(const nifti_image& image, const std::byte* stored, std::int64_t count, float* values) {
    withStoredType(image.datatype, [&](auto type) {
        convert<decltype(type)>(stored, count, image.scl_slope, image.scl_inter, isScaled(image), values);
    });
}

} // namespace zn::headless
