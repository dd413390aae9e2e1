#pragma once

namespace zn {

/// Partial sums that a kernel keeps side by side: sum i covers the voxels i, i + 8, i + 16, ... Their number is fixed,
/// so that a sum has the same bits with every compiler and every vector width.
constexpr int kPartialSums = 8;

/// Contrast functions of the fixed-point iteration, in place of their argument; adds the derivative to partial sums.
///
///   y        [0..count-1]           in: projections; out: g(y)
///   slopes   [0..kPartialSums-1]    in/out: sums of g'(y)
///
/// tanh: g = tanh(y), g' = 1 - g^2. gaussian: g = y exp(-y^2 / 2), g' = (1 - y^2) exp(-y^2 / 2). cube: g = y^3,
/// g' = 3 y^2. The first two follow the standard library's functions within 2 units in the last place, over the whole
/// range, infinities and NaNs included. No branch depends on a value.
template <int lanes> void tanhKernel(double* y, int count, double* slopes);
template <int lanes> void gaussianKernel(double* y, int count, double* slopes);
template <int lanes> void cubeKernel(double* y, int count, double* slopes);

/// In place of y: ln cosh(y), within 2e-16 (1 + |y|).
template <int lanes> void logCoshKernel(double* y, int count);

/// sums[i] += z[i] g[i] + z[i + 8] g[i + 8] + ..., for 0 <= i < kPartialSums.
///
///   next   [0..count-1]   what is read after z: prefetched meanwhile
template <int lanes> void productKernel(const double* z, const double* next, const double* g, int count, double* sums);

/// tanh and exp as the kernels compute them, for 0 <= i < count, in place.
template <int lanes> void tanhOnlyKernel(double* x, int count);
template <int lanes> void expOnlyKernel(double* x, int count);

} // namespace zn
