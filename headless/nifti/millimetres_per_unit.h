#pragma once

#include <nifti2_io.h>

namespace zn::headless {

/// The millimetres in a header's unit of length, `xyz_units`; 1 if it names none.
inline double millimetresPerUnit(int unit) {
    if (unit == NIFTI_UNITS_METER) return 1e3;
    if (unit == NIFTI_UNITS_MICRON) return 1e-3;
    return 1.0;
}

} // namespace zn::headless
