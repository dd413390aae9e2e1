#pragma once

#include "headless/blas/matrix_products.h"
#include "headless/dimension/parallel_analysis.h"
#include "headless/dimension/series_covariances.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace zn::headless {

/// The number of components by several criteria. Parallel analysis (parallel_analysis.h) is used; the others, which are
/// reported beside it, need nothing but the eigenvalues l_1 >= ... >= l_T of the temporal covariance over V voxels.
///
/// Parallel analysis assumes the same noise variance in all voxels. It is therefore done twice: the leading directions
/// of the first pass are projected out to estimate each voxel's noise, and the second pass runs on the
/// variance-normalised series (seriesCovariances).
///
/// Only the spatial mean of every volume is removed, so l_1 belongs to the mean image: it is one of the directions that
/// the analysis keeps and counts like any other. Eigenvalues at rounding level (below 1e-12 of the first) are omitted;
/// d remain. The number k is searched for from 1 to d / 4: at least three quarters of the directions are taken to be
/// noise.
///
/// Effective sample size. Neighbouring voxels are not independent samples. The eigenvalues of noise over N independent
/// samples scatter about their mean with variance mean^2 * d / N (Marchenko and Pastur 1967), so the scatter of the
/// eigenvalues after the first k gives N = (d - k) * mean^2 / variance, at most V. k itself is the number of
/// eigenvalues above the optimal threshold w(b)^2 * median (Gavish and Donoho 2014, IEEE Trans. Inf. Theory 60(8),
/// 5040-5053: w(b) = 0.56 b^3 - 0.95 b^2 + 1.82 b + 1.43 with b = d / N, at most 1); N and k are computed alternately,
/// starting from k = d / 4, until k no longer decreases.
///
/// Criteria, with v the mean of the eigenvalues after the first k:
///   MDL      N (d - k) (ln v - mean of their logarithms) + k (2 d - k) / 2 ln N; smallest is best
///            (Wax and Kailath 1985, IEEE Trans. ASSP 33(2), 387-392; the same trade-off as BIC)
///   Laplace  log evidence of k; largest is best (Minka 2000, "Automatic choice of dimensionality for PCA",
///            equation 30)
struct ComponentEstimate {
    std::vector<double> eigenvalues; ///< the input
    double effectiveSamples = 0.0;   ///< N
    int byThreshold = 1;             ///< k of the optimal threshold
    int byMdl = 1;
    int byLaplace = 1;
    std::vector<double> mdl;     ///< element k - 1 for k components
    std::vector<double> laplace; ///< element k - 1 for k components

    ParallelAnalysis parallel;

    int chosen() const { return parallel.count; }
    /// The smallest and the largest estimate of parallel analysis, MDL and the optimal threshold differ by a factor of
    /// two or more.
    bool disagree() const;
};

/// The criteria that need nothing but the eigenvalues.
ComponentEstimate eigenvalueCriteria(const std::vector<double>& eigenvalues, std::int64_t voxels);

/// The covariances of a series, variance-normalised if there are directions to project out: seriesCovariances with all
/// but its last argument given.
using CovariancesOf = std::function<SeriesCovariances(const Directions& leading)>;

/// All of them. Throws Failure (kOther) if LAPACK does not converge. Bit-identical for any number of threads while the
/// BLAS itself uses one.
ComponentEstimate estimateComponents(const CovariancesOf& covariancesOf, MatrixProducts& products);

} // namespace zn::headless
