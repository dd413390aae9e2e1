#pragma once

namespace zn {

/// Sorts eigenvalues into descending order and the columns of the eigenvectors with them. Of equal eigenvalues the one
/// with the later index comes first.
///
///   d   [1..n]        eigenvalues
///   v   [1..n][1..n]  column k belongs to d[k]
void sortEigenpairs(double* d, double** v, int n);

} // namespace zn
