#pragma once

namespace zn {

/// Eigen-decomposition of a symmetric matrix by cyclic Jacobi rotations.
///
///   a      [1..n][1..n]  in: symmetric; out: destroyed above the diagonal
///   n                    order of a, at least 1
///   d      [1..n]        out: eigenvalues in no particular order, unit of a
///   v      [1..n][1..n]  out: column k is the unit eigenvector of d[k]
///   nrot                 out: number of rotations done
///
/// Fails when 50 sweeps do not suffice, hence always for a matrix that contains a NaN:
/// nrerror("Too many iterations in routine jacobi").
/// O(n^3) per sweep. Method: Golub and Van Loan, Matrix Computations, 4th ed., section 8.5.
void jacobi(double** a, int n, double* d, double** v, int* nrot);

} // namespace zn
