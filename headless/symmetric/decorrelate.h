#pragma once

#include "headless/symmetric/unmixing_matrix.h"

namespace zn::headless {

/// W <- (W Wt)^(-1/2) W: the orthonormal rows nearest to those of W, none of which is preferred. By the eigenvalues of
/// W Wt (LAPACK), O(n^3). False when W contains a non-finite value or its rows are linearly dependent in double
/// precision; W is then meaningless. Throws std::bad_alloc.
bool decorrelate(UnmixingMatrix& w);

} // namespace zn::headless
