#pragma once

#include "headless/nifti/image_header.h"

#include <cstddef>
#include <cstdint>

namespace zn::headless {

/// True when the header asks for value = slope * stored + inter with an effect. A slope of 0 means "not scaled", and so
/// does one that is not a number.
bool isScaled(const nifti_image& image);

/// Throws Failure (kInput) unless the stored type is an integer of 8 to 64 bits or a float of 32 or 64.
void requireRealNumbers(const ImageHeader& header);

/// Stored values to single precision, scaled where the header says so (in double precision).
///
///   stored   count values of the header's type in this machine's byte order
///   values   [0..count-1] out
void toFloat(const nifti_image& image, const std::byte* stored, std::int64_t count, float* values);

} // namespace zn::headless
