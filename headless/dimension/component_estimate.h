#pragma once

#include <cstdint>
#include <vector>

namespace zn::headless {

/// How many components the eigenvalues l_1 >= ... >= l_T of a temporal covariance over V voxels speak for.
///
/// Only the spatial mean of every volume is removed, so l_1 is the mean image: it is one of the directions that the
/// analysis keeps, and is counted like every other. Eigenvalues of rounding (below 1e-12 of the first) are left out;
/// d are left. The number k is looked for from 1 to d / 4: three quarters of the directions are held to be noise.
///
/// Effective sample size. Neighbouring voxels are no independent samples. The eigenvalues of noise over N independent
/// samples scatter about their mean with the variance mean^2 * d / N (Marchenko and Pastur 1967), so the scatter of
/// the eigenvalues after the first k gives N = (d - k) * mean^2 / variance, at most V. k itself is the number of
/// eigenvalues above the optimal threshold w(b)^2 * median (Gavish and Donoho 2014, IEEE Trans. Inf. Theory 60(8),
/// 5040-5053: w(b) = 0.56 b^3 - 0.95 b^2 + 1.82 b + 1.43 with b = d / N, at most 1); both are taken in turn from
/// k = d / 4 on until k falls no more.
///
/// Criteria, with v the mean of the eigenvalues after the first k:
///   MDL      N (d - k) (ln v - mean of their logarithms) + k (2 d - k) / 2 ln N; least is best
///            (Wax and Kailath 1985, IEEE Trans. ASSP 33(2), 387-392; the same trade as BIC)
///   Laplace  the logarithm of the evidence of k; largest is best (Minka 2000, "Automatic choice of dimensionality
///            for PCA", equation 30)
struct ComponentEstimate {
    std::vector<double> eigenvalues; ///< all that went in
    double effectiveSamples = 0.0;   ///< N
    int byThreshold = 1;             ///< k of the optimal threshold
    int byMdl = 1;
    int byLaplace = 1;
    std::vector<double> mdl;     ///< element k - 1 for k components
    std::vector<double> laplace; ///< element k - 1 for k components

    int chosen() const { return byMdl; } ///< the most careful of the three on structured noise
};

ComponentEstimate estimateComponents(const std::vector<double>& eigenvalues, std::int64_t voxels);

} // namespace zn::headless
