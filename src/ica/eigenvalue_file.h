#pragma once

namespace zn {

/// Writes sorted eigenpairs as little-endian IEEE doubles without a header: n eigenvalues, then n rows, row r holding
/// v[r][1..n], the r-th component of every eigenvector; 8 n + 8 n^2 bytes. An existing file is replaced; a file that
/// cannot be opened is silently not written.
///
///   d   [1..n]        eigenvalues
///   v   [1..n][1..n]  column k is the eigenvector of d[k]
void writeEigenvalueFile(const char* fileName, const double* d, const double* const* v, int n);

} // namespace zn
