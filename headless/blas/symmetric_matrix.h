#pragma once

namespace zn::headless {

// Each throws std::bad_alloc when LAPACK finds no work space.

/// Adds scale * Rt R to the upper triangle of a symmetric matrix, with the BLAS (dsyrk) and as many threads as it uses.
///
///   rows    [count][order], row after row: R
///   upper   [order][order], row after row; elements below the diagonal are not touched
void addCrossProducts(const double* rows, int count, int order, double scale, double* upper);

/// The eigenvalues of a symmetric matrix in descending order, with LAPACK (dsyev). Returns LAPACK's `info`: 0, or the
/// number of off-diagonal elements that did not converge, in which case `values` are meaningless.
///
///   upper    [order][order], row after row; only the upper triangle is read, all of it is destroyed
///   values   [order]
int symmetricEigenvalues(double* upper, int order, double* values);

/// The same with the unit eigenvectors (dsyevd), which replace the matrix: row i belongs to values[i].
int symmetricEigenpairs(double* upper, int order, double* values);

/// Solves A X = B for a symmetric positive definite A, with LAPACK (dposv). Returns false, with B unchanged or
/// meaningless, unless A is positive definite.
///
///   upper     [order][order], row after row; only the upper triangle is read, and it is destroyed
///   right     [order][columns], row after row; in: B, out: X
bool solvePositiveDefinite(double* upper, int order, double* right, int columns);

} // namespace zn::headless
