#pragma once

#include "headless/symmetric/unmixing_matrix.h"

#include <vector>

namespace zn::headless {

/// The chosen rows of w, in descending order of explained variance, sum of eigenvalues[j] w[j]^2; each changes its sign
/// where its third moment is negative.
///
///   eigenvalues    [n]
///   thirdMoments   [n], E{y^3} of each row's component
///   chosen         [n], rows to return
std::vector<std::vector<double>> orderedAndSigned(const UnmixingMatrix& w, const double* eigenvalues,
                                                  const std::vector<double>& thirdMoments,
                                                  const std::vector<bool>& chosen);

} // namespace zn::headless
