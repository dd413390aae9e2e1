#pragma once

#include "headless/symmetric/unmixing_matrix.h"

#include <vector>

namespace zn::headless {

/// The time course of a unit vector w is its product with this matrix, T x n, row-major.
struct Dewhitening {
    const double* values;
    int volumes; ///< T
};

/// The chosen rows of w, in descending order of explained variance, the variance over time of their courses; each
/// changes its sign where its third moment is negative.
///
///   thirdMoments   [n], E{y^3} of each row's component
///   chosen         [n], rows to return
std::vector<std::vector<double>> orderedAndSigned(const UnmixingMatrix& w, const Dewhitening& dewhitening,
                                                  const std::vector<double>& thirdMoments,
                                                  const std::vector<bool>& chosen);

} // namespace zn::headless
