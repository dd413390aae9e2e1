#pragma once

#include "headless/blas/matrix_products.h"
#include "headless/dimension/series_covariances.h"

#include <array>
#include <vector>

namespace zn::headless {

/// The noise that is left of a series when its k leading directions have been projected out.
struct NoiseModel {
    double edge = 0.0;              ///< the largest eigenvalue that noise of this kind yields
    std::array<double, 3> fwhm{};   ///< its smoothness along x, y, z, in voxels
    double correlation = 0.0;       ///< of consecutive volumes
    double independentVoxels = 0.0; ///< V (mean s)^2 / mean of s^2, with s the spatial spectrum
};

/// Describes that noise as the product of a spatial correlation, which is Gaussian, and a temporal one, which is that
/// of an autoregressive process. With P the projection onto the directions that are left (rank d - k):
///
///   smoothness    along every axis, rho = 1 - tr(P D P) / tr(P C P) is the correlation of neighbours, with C the
///                 covariance of the data and D that of the differences; FWHM = sqrt(-2 ln 2 / ln rho), as in Forman et
///                 al. (1995), Magnetic Resonance in Medicine 33, 636-647
///   time          the autocovariances g_n, n = 0 ... p, with tr(L_m P D P) = sum_n g_n tr(L_m P L_n P) for all m;
///                 L_n has ones at a distance of n from the diagonal. They are corrected for the directions that were
///                 projected out, as in Worsley et al. (2002), NeuroImage 15, 1-15. p is T / 12, from 2 to 8. D
///                 instead of C, because the differences contain little of the components that are yet to be found.
///   level         the noise has as much variance as the directions that are left
class ResidualNoise {
public:
    /// Throws Failure (kOther) if LAPACK does not converge.
    ResidualNoise(const SeriesCovariances& covariances, MatrixProducts& products);

    /// Eigenvalues of C in descending order, those at rounding level (below 1e-12 of the first) included.
    const std::vector<double>& eigenvalues() const { return values_; }
    /// d: the number of those above rounding level.
    int dimensions() const { return dimensions_; }

    /// The directions of the k largest eigenvalues.
    Directions leading(int k) const;

    /// k from 0 to d - 2.
    NoiseModel after(int k) const;

private:
    using Matrix = std::vector<double>; // [T][T]

    Matrix rotated(const Matrix& matrix) const;
    Matrix rotatedLag(int lag) const;
    double sumOfProducts(const Matrix& a, const Matrix& b, int k) const;
    std::vector<double> autocovariance(int k) const;
    std::vector<double> temporalEigenvalues(const std::vector<double>& correlation, int k) const;

    MatrixProducts& products_;
    int volumes_;
    std::int64_t voxels_;
    int dimensions_ = 0;
    Matrix vectors_; // row i: the direction of eigenvalue i
    std::vector<double> values_;
    std::array<std::vector<double>, 3> rough_; // per axis: the variance of the differences along every direction
    Matrix differences_;                       // D, the mean over the axes, in these directions
    std::vector<Matrix> lags_;                 // L_n in these directions
};

} // namespace zn::headless
