#pragma once

#include "ica/contrast/nonlinearity.h"

namespace zn {

/// Whitened data as the fixed-point iteration sees it.
struct WhitenedData {
    const double* z; ///< n x V, row-major
    int dimension;   ///< n
    int voxels;      ///< V
};

/// One fixed-point update for one unit: w <- E{z g(wt z)} - E{g'(wt z)} w, means over the voxels, with g the cube,
/// tanh(y), or y exp(-y^2 / 2). The result is not normalised.
///
///   w      [0..n-1]  in: unit vector; out: its update
///   y      [0..V-1]  work space
///   work   [0..n-1]  work space
///
/// Method: Hyvarinen (1999), IEEE Trans. Neural Networks 10(3), 626-634, equation (20).
void fixedPointStep(Nonlinearity nonlinearity, const WhitenedData& data, double* w, double* y, double* work);

} // namespace zn
