#pragma once

namespace zn {

/// Pearson correlation of two series at lag zero, in single precision, all sums in index order.
///
///   x, y  [1..n]  in
///   r             out: -1 .. 1; 0 when either series is constant or holds a NaN
void correlate(const float* x, const float* y, int n, float* r);

/// The same for every row of x with every row of y; each result is bit for bit that of correlate.
///
///   x  [0..k-1][0..n-1]  in
///   y  [0..m-1][0..n-1]  in
///   r  [0..k-1][0..m-1]  out
///
/// Means and sums of squares are computed once per row; the sums of products of one x row with several y rows are
/// accumulated side by side, one lane per y row.
void correlateRows(const float* const* x, int k, const float* const* y, int m, int n, float** r);

} // namespace zn
