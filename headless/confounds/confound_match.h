#pragma once

#include "headless/confounds/confound_table.h"

#include <span>

namespace zn::headless {

/// The confound that a time course resembles most.
struct ConfoundMatch {
    int confound = -1; ///< counted from 0; -1: none, since the time course is constant or not finite
    double r = 0.0;    ///< Pearson correlation, of either sign
};

/// The confound with the largest absolute correlation; the first of equal ones. Volumes in which a confound has no
/// value are left out of its correlation.
///
///   course   one value per analysed volume
ConfoundMatch strongestConfound(std::span<const float> course, const Confounds& confounds);

} // namespace zn::headless
