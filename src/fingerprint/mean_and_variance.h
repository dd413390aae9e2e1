#pragma once

namespace zn {

/// Mean and sample variance (divisor n - 1) in single precision, all sums in index order.
///
///   values    [1..n]  in
///   n                 number of values; the variance of fewer than two is NaN
///   mean, variance    out
///
/// Method: corrected two-pass algorithm, Chan, Golub and LeVeque (1983), The American Statistician 37(3), 242-247.
void meanAndVariance(const float* values, int n, float* mean, float* variance);

/// The same for every row of a matrix; each row's result is bit for bit that of meanAndVariance.
///
///   rows      [0..k-1][0..n-1]  in
///   mean      [0..k-1]          out
///   variance  [0..k-1]          out
void rowMeansAndVariances(const float* const* rows, int k, int n, float* mean, float* variance);

/// Mean and sum of squared deviations from it, row by row, in single precision and index order.
///
///   rows     [0..k-1][0..n-1]  in
///   mean     [0..k-1]          out
///   squares  [0..k-1]          out: sum over j of (rows[i][j] - mean[i])^2
void rowMeansAndSquares(const float* const* rows, int k, int n, float* mean, float* squares);

} // namespace zn
