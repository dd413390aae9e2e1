#pragma once

#include "headless/denoise/denoising.h"

namespace zn::headless {

/// Writes the components' courses under names that say what became of them ("accepted_00", "rejected_03"), one row per
/// volume of the image, n/a for dummy scans, with a sidecar. Throws Failure (kOther).
void writeNamedCourses(const Denoising& run);

} // namespace zn::headless
