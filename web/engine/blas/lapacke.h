#pragma once

// The part of LAPACKE that the headless host uses, on top of Eigen; see cblas.h.

constexpr int LAPACK_ROW_MAJOR = 101;
constexpr int LAPACK_COL_MAJOR = 102;
constexpr int LAPACK_WORK_MEMORY_ERROR = -1010;
constexpr int LAPACK_TRANSPOSE_MEMORY_ERROR = -1011;

extern "C" {

/// Eigenvalues in ascending order of the symmetric matrix in the lower triangle of a (column-major); with `job` 'V' the
/// unit eigenvectors replace it, one per column. 0, 1 where the iteration did not converge, or a code for no memory.
int LAPACKE_dsyev(int order, char job, char half, int n, double* a, int strideA, double* values);
int LAPACKE_dsyevd(int order, char job, char half, int n, double* a, int strideA, double* values);

/// Solves A X = B, which X replaces; A (row-major, its upper triangle) is symmetric. 0, 1 unless it is positive
/// definite, or a code for no memory.
int LAPACKE_dposv(int order, char half, int n, int columns, double* a, int strideA, double* b, int strideB);
}
