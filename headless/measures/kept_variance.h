#pragma once

#include <vector>

namespace zn::headless {

/// The eigenpairs of the temporal covariance of T volumes, as the plug-in leaves them in its .eig file.
struct TemporalEigenpairs {
    std::vector<double> values;  ///< T, in descending order
    std::vector<double> vectors; ///< T x T, row t: element t of every vector
};

/// The share of the variance over time that lies in the eigenvalues kept, in per cent: what remains of the data X, with
/// each voxel's mean over time removed, after projection onto those eigenvectors. With s_i the sum of the elements of
/// vector i, l_i its eigenvalue, and both sums over i, the first over the eigenvalues kept:
///
///   100 % * sum of l_i (1 - s_i^2 / T) / sum of l_i (1 - s_i^2 / T)
///
/// NaN without eigenpairs, and for data that do not vary over time.
///
///   first, last   the eigenvalues kept, counted from 1
double keptVariancePercent(const TemporalEigenpairs& eigen, int first, int last);

} // namespace zn::headless
