#pragma once

#include "headless/nifti/image_header.h"

#include <cstddef>
#include <cstdint>

namespace zn::headless {

/// True when value = slope * stored + inter, as given by the header, changes the values. A slope of 0 or NaN means "not
/// scaled".
bool isScaled(const nifti_image& image);

/// Throws Failure (kInput) unless the stored type is an integer of 8 to 64 bits or a float of 32 or 64 bits.
void requireRealNumbers(const ImageHeader& header);

/// Converts stored values to single precision and scales them, in double precision, if the header says so.
///
///   stored   count values of the header's type in this machine's byte order
///   values   [0..count-1] out
void toFloat(const nifti_image& image, const std::byte* stored, std::int64_t count, float* values);

} // namespace zn::headless
