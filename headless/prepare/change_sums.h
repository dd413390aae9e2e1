#pragma once

namespace zn::headless {

/// Partial sums that the kernel keeps side by side. Their number is fixed, so that a sum has the same bits with every
/// vector width.
constexpr int kChangeSums = 16;

/// Adds up squares of the changes x[t] = a[t] - a[t - 1] and y[t] = b[t] - b[t - 1], for 1 <= t < volumes. Sum i gets
/// every 16th, from t = 1 + i on, and sum 0 also those left at the end.
///
///   differences   [0..kChangeSums-1]   in/out: sums of (x - y)^2
///   squares       [0..kChangeSums-1]   in/out: sums of x^2 + y^2
template <int lanes>
void changeSumsKernel(const float* a, const float* b, int volumes, float* differences, float* squares);

} // namespace zn::headless
