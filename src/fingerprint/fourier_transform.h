#pragma once

#include "numeric/array_owners.h"

namespace zn {

/// Discrete Fourier transform of n complex points, n a power of two: X_k = sum over j of x_j exp(-2 pi i j k / n).
///
/// Method: radix 2, decimation in time, Cooley and Tukey (1965), Mathematics of Computation 19(90), 297-301. The
/// constructor makes the tables once; a transform is O(n log n) and in place.
class FourierTransform {
public:
    explicit FourierTransform(int n);

    /// re, im  [0..n-1]  in: the points; out: their transform, not normalised
    void transform(double* re, double* im) const;

private:
    int n_;
    OffsetVector<int> reversed_;  // [0..n-1], the index with its bits in reverse order
    OffsetVector<double> cosine_; // [0..n/2-1], of 2 pi i / n
    OffsetVector<double> sine_;
};

} // namespace zn
