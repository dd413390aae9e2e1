#pragma once

#include <cstddef>
#include <vector>

namespace zn::headless {

/// A time course with its mean removed, scaled to unit length; zeros if it is constant.
using UnitCourse = std::vector<double>;

///   values   one per analysed volume, all finite
UnitCourse unitCourse(const std::vector<double>& values);

/// The columns of the regression; all have the same length, one value per analysed volume.
struct Regressors {
    std::size_t volumes = 0;
    std::vector<UnitCourse> rejected; ///< courses of the rejected components
    std::vector<UnitCourse> kept;     ///< courses of the other components
    std::vector<UnitCourse> nuisance; ///< confounds, then the cosines of the high-pass filter
};

} // namespace zn::headless
