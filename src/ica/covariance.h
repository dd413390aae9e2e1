#pragma once

#include "numeric/array_owners.h"

namespace zn {

/// Temporal covariance of the centred data: Xt X / V, computed by the host's product, mirrored from its upper triangle.
/// The divisor is the number of voxels V, not V - 1.
///
///   x        V x T, row-major
///   result   [1..T][1..T]
///
/// Logs begin and end with the elapsed seconds. Throws std::bad_alloc.
OffsetMatrix<double> computeCovariance(const double* x, int voxels, int volumes);

/// Eigenvalues in descending order with their eigenvectors.
struct Eigenpairs {
    OffsetVector<double> values;  ///< [1..T]
    OffsetMatrix<double> vectors; ///< [1..T][1..T], column k belongs to values[k]
};

/// Writes the covariance to "Covariance.txt", decomposes it, releases it, and saves the eigenpairs beside the VTC.
///
///   covariance   [1..T][1..T], in: symmetric; out: released
///   vtcFile      name of the VTC file; the eigenvalue file takes its stem and ends in ".eig"
Eigenpairs decomposeCovariance(OffsetMatrix<double>& covariance, int volumes, const char* vtcFile);

} // namespace zn
