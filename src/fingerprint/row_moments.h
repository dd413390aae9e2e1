#pragma once

namespace zn {

/// Excess kurtosis of each row, in single precision and index order.
///
///   rows      [0..k-1][0..n-1]  in
///   kurtosis  [0..k-1]          out: (sum of ((x_j - mean) / sd)^4 over all j but the last) / n - 3
///
/// The last value counts in the mean, the standard deviation and the divisor, but not in the sum of fourth powers.
void rowKurtosis(const float* const* rows, int k, int n, float* kurtosis);

/// Skewness of each row, in single precision and index order.
///
///   rows      [0..k-1][0..n-1]  in
///   skewness  [0..k-1]          out: (sum of (x_j - mean)^3 over all j but the last + the last x) / n / sd^3
///
/// The last value enters the sum of third powers unchanged, neither centred nor cubed.
void rowSkewness(const float* const* rows, int k, int n, float* skewness);

} // namespace zn
