#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// The eigenvalues of a spatial correlation: `value` is that of a share `weight` of them. The weights add up to 1 and
/// the weighted mean of the values is 1.
struct SpatialEigenvalue {
    double value;
    double weight;
};

/// The spectrum of stationary noise on a large grid, white noise smoothed with a Gaussian: proportional to
/// exp(-4 pi^2 (sx^2 fx^2 + sy^2 fy^2 + sz^2 fz^2)) at the frequencies f, with s the standard deviations.
///
///   fwhm   full width at half maximum of the Gaussian along x, y, z in voxels, at least 0
std::vector<SpatialEigenvalue> gaussianSpectrum(const std::array<double, 3>& fwhm);

/// The upper edge of the eigenvalues of the temporal covariance of noise, X^T X / V with X = S^1/2 G A^1/2: G holds
/// V x T independent values of unit variance, S is the spatial correlation and A the temporal covariance. In the limit
/// of large V and T no eigenvalue of the noise lies above it.
///
///   temporal   eigenvalues of A, at least 0, one of them above 0
///   spatial    eigenvalues of S
///   voxels     V
///
/// With F(q) = 1/V sum_j a_j / (1 - q a_j) and G(p) = mean of s / (1 - p s), real q F(q) = p G(p) has one solution p
/// for every q in (0, 1 / max a), and the edge is the smallest z = F(q) / p. For A and S equal to the identity it is
/// (1 + sqrt(T / V))^2 (Marchenko and Pastur 1967).
///
/// Method: the equations of Couillet and Hachem (2014), Random Matrices: Theory and Applications 3(4), 1450016, on the
/// real axis above the spectrum.
double noiseEdge(const std::vector<double>& temporal, const std::vector<SpatialEigenvalue>& spatial,
                 std::int64_t voxels);

} // namespace zn::headless
