#pragma once

#include "ica/covariance.h"
#include "numeric/array_owners.h"

namespace zn {

/// Data reduced to n eigenvectors and scaled to unit variance along each. T volumes, V voxels.
struct Whitening {
    ZeroedBlock whitening;   ///< Wh, n x T: row r is eigenvector r divided by the root of its eigenvalue
    ZeroedBlock dewhitening; ///< DW, T x n: column r is eigenvector r times that root
    ZeroedBlock data;        ///< Z = Wh Xt, n x V
};

/// Keeps the eigenpairs first..last, logs how much variance they retain, and whitens the data with them.
///
///   x       V x T, row-major, centred
///   eigen   [1..T]; out: released
///
/// A rank outside 1..T counts as eigenvalue 0 with a zero vector. Eigenvalues of 0 or below are not guarded against:
/// the resulting infinities and NaNs are passed on. Throws std::bad_alloc.
Whitening whiten(const double* x, int voxels, int volumes, Eigenpairs& eigen, int first, int last);

} // namespace zn
