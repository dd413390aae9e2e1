#pragma once

#include "headless/denoise/clean_courses.h"

namespace zn::headless {

/// The sum over the voxels of the mask and the volumes of the squared part that some of the columns explain:
/// sum over j, k of columns_j . columns_k * products_jk, for first <= j, k < end.
double explainedSquares(const Cleaning& cleaning, const Removal& removal, int first, int end);

} // namespace zn::headless
