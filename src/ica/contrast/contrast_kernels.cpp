#include "ica/contrast/contrast_kernels.h"

#include "numeric/lanes.h"

namespace zn {

namespace {

using Bits = long long __attribute__((vector_size(kLanes * sizeof(long long))));

// Adding this to a whole number leaves it in the low bits of the sum's mantissa; adding and subtracting rounds.
constexpr double kWholeNumber = 6755399441055744.0; // 1.5 * 2^52
constexpr double kExponentBias = 1023.0;

constexpr double kLog2OfE = 1.4426950408889634;
constexpr double kLn2High = 0x1.62e42feep-1; // 33 bits: its product with a whole number up to 2^20 is exact
constexpr double kLn2Low = 0x1.a39ef35793c76p-33;

// 1 / 2!, 1 / 3!, ... 1 / 13!: the series of exp from the square on. For |r| <= ln(2) / 2 the rest is below 2^-57.
constexpr double kSeries[] = {
    1.0 / 2,     1.0 / 6,      1.0 / 24,      1.0 / 120,      1.0 / 720,       1.0 / 5040,
    1.0 / 40320, 1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600, 1.0 / 6227020800,
};
constexpr int kTerms = sizeof kSeries / sizeof kSeries[0];

[[gnu::always_inline]] inline Lanes select(Bits condition, Lanes yes, Lanes no) {
    return condition ? yes : no;
}

[[gnu::always_inline]] inline Lanes absolute(Lanes x) {
    return (Lanes)((Bits)x & (Bits)(0x7fffffffffffffffLL - Bits{}));
}

[[gnu::always_inline]] inline Lanes withSignOf(Lanes magnitude, Lanes x) {
    const Bits sign = (Bits)(-0.0 - Lanes{});
    return (Lanes)((Bits)magnitude | ((Bits)x & sign));
}

// 2^k for whole k from -1022 to 1023.
[[gnu::always_inline]] inline Lanes powerOfTwo(Lanes k) {
    return (Lanes)((Bits)(k + (kWholeNumber + kExponentBias)) << 52);
}

// e^x = 2^k e^r: k whole and near x / ln 2.
[[gnu::always_inline]] inline Lanes exponential(Lanes x) {
    // Beyond these the result is 0 or infinity; a NaN fails both comparisons and stays.
    x = select((Bits)(x < -746.0), broadcast(-746.0), x);
    x = select((Bits)(x > 710.0), broadcast(710.0), x);
    const Lanes k = (x * kLog2OfE + kWholeNumber) - kWholeNumber;
    const Lanes r = (x - k * kLn2High) - k * kLn2Low;
    Lanes series = broadcast(kSeries[kTerms - 1]);
    for (int i = kTerms - 2; i >= 0; --i) series = series * r + kSeries[i];
    // In two steps, because 2^k alone may be beyond the normal numbers while the result is not.
    const Lanes half = (k * 0.5 + kWholeNumber) - kWholeNumber;
    return (1.0 + (r + r * r * series)) * powerOfTwo(half) * powerOfTwo(k - half);
}

// r coth(r) - 1 = z (1/3 - z/45 + ...), z = r^2: the error is below 1e-17 for |r| < 0.75. The coefficients come from
// Chebyshev interpolation over that range, lowest power first. Summed in pairs instead of by Horner's rule, which
// shortens the chain of dependent operations.
[[gnu::always_inline]] inline Lanes cothSeries(Lanes z) {
    constexpr double c[] = {
        0x1.5555555555555p-2,   -0x1.6c16c16c1699dp-6,  0x1.1566abbfd6904p-9,
        -0x1.bbd778f00879ep-13, 0x1.66a8df6b6dd30p-16,  -0x1.227d3c59f21f1p-19,
        0x1.d642043baece4p-23,  -0x1.7505ccf314700p-26, 0x1.e147f62f94365p-30,
    };
    const Lanes z2 = z * z;
    const Lanes z4 = z2 * z2;
    const Lanes low = (c[0] + c[1] * z) + (c[2] + c[3] * z) * z2;
    const Lanes high = (c[4] + c[5] * z) + (c[6] + c[7] * z) * z2 + c[8] * z4;
    return (low + high * z4) * z;
}

// With c = r coth(r), e^2r = (c + r) / (c - r). So, for |x| = k ln(2) / 2 + r and p = 2^k,
//   tanh |x| = 1 - 2 / (e^2|x| + 1) = 1 - (c - r) / (c (p + 1) / 2 + r (p - 1) / 2),
// and near zero, where k is 0, tanh |x| = r / c = r - r (c - 1) / c. Both as one difference and one division.
[[gnu::always_inline]] inline Lanes hyperbolicTangent(Lanes x) {
    constexpr double kNearZero = 0.75;
    constexpr double kSaturated = 20.0; // tanh rounds to 1 from 19.1 on
    const Lanes magnitude = absolute(x);
    const Bits nearZero = (Bits)(magnitude < kNearZero);
    const Lanes a = select((Bits)(magnitude > kSaturated), broadcast(kSaturated), magnitude);

    const Lanes k = select(nearZero, Lanes{}, (a * (2.0 * kLog2OfE) + kWholeNumber) - kWholeNumber);
    const Lanes r = (a - k * (0.5 * kLn2High)) - k * (0.5 * kLn2Low);
    const Lanes s = cothSeries(r * r);

    const Lanes halfPower = powerOfTwo(k - 1.0);
    const Lanes half = halfPower + 0.5;
    const Lanes bottom = half + (half * s + (halfPower - 0.5) * r);
    const Lanes top = select(nearZero, r * s, 1.0 + (s - r));
    return withSignOf(select(nearZero, r, broadcast(1.0)) - top / bottom, x);
}

constexpr double kLn2 = 0x1.62e42fefa39efp-1;

// ln cosh y = |y| - ln 2 + ln(1 + e), e = exp(-2 |y|), where ln(1 + e) = 2 artanh(s), s = e / (2 + e): with s at most
// 1/3, sixteen terms of s + s^3 / 3 + s^5 / 5 + ... leave less than 1e-17.
[[gnu::always_inline]] inline Lanes logCosh(Lanes y) {
    constexpr int kArtanhTerms = 16;
    const Lanes magnitude = absolute(y);
    const Lanes e = exponential(magnitude * -2.0);
    const Lanes s = e / (2.0 + e);
    const Lanes square = s * s;
    Lanes series = broadcast(1.0 / (2 * kArtanhTerms - 1));
    for (int i = kArtanhTerms - 2; i >= 0; --i) series = series * square + 1.0 / (2 * i + 1);
    return magnitude + (2.0 * s * series - kLn2);
}

struct Contrast {
    Lanes g;
    Lanes slope;
};

[[gnu::always_inline]] inline Contrast tanhContrast(Lanes y) {
    const Lanes g = hyperbolicTangent(y);
    return {g, 1.0 - g * g};
}

[[gnu::always_inline]] inline Contrast gaussianContrast(Lanes y) {
    const Lanes square = y * y;
    const Lanes bell = exponential(square * -0.5);
    return {y * bell, (1.0 - square) * bell};
}

[[gnu::always_inline]] inline Contrast cubeContrast(Lanes y) {
    const Lanes square = y * y;
    return {square * y, 3.0 * square};
}

constexpr int kParts = kPartialSums / kLanes;

// Eight voxels at a time; of a last, shorter group only the voxels that exist are stored and counted.
template <Contrast (*contrast)(Lanes)> [[gnu::always_inline]] inline void apply(double* y, int count, double* slopes) {
    Lanes sums[kParts];
    for (int i = 0; i < kParts; ++i) sums[i] = load(group(slopes, i));
    int v = 0;
    for (; v + kPartialSums <= count; v += kPartialSums) {
        for (int i = 0; i < kParts; ++i) {
            const Contrast c = contrast(load(group(y + v, i)));
            store(c.g, group(y + v, i));
            sums[i] += c.slope;
        }
    }
    for (int i = 0; i < kParts; ++i) store(sums[i], group(slopes, i));

    double rest[kPartialSums] = {};
    double restSlopes[kPartialSums];
    for (int i = 0; v + i < count; ++i) rest[i] = y[v + i];
    for (int i = 0; i < kParts; ++i) {
        const Contrast c = contrast(load(group(rest, i)));
        store(c.g, group(rest, i));
        store(c.slope, group(restSlopes, i));
    }
    for (int i = 0; v + i < count; ++i) {
        y[v + i] = rest[i];
        slopes[i] += restSlopes[i];
    }
}

template <Lanes (*function)(Lanes)> [[gnu::always_inline]] inline void applyOnly(double* x, int count) {
    for (int first = 0; first < count; first += kLanes) {
        const int present = count - first < kLanes ? count - first : kLanes;
        double values[kLanes] = {};
        for (int i = 0; i < present; ++i) values[i] = x[first + i];
        store(function(load(values)), values);
        for (int i = 0; i < present; ++i) x[first + i] = values[i];
    }
}

} // namespace

template <int lanes> void tanhKernel(double* y, int count, double* slopes) {
    apply<tanhContrast>(y, count, slopes);
}

template <int lanes> void gaussianKernel(double* y, int count, double* slopes) {
    apply<gaussianContrast>(y, count, slopes);
}

template <int lanes> void cubeKernel(double* y, int count, double* slopes) {
    apply<cubeContrast>(y, count, slopes);
}

template <int lanes> void logCoshKernel(double* y, int count) {
    applyOnly<logCosh>(y, count);
}

template <int lanes> void productKernel(const double* z, const double* next, const double* g, int count, double* sums) {
    Lanes partial[kParts];
    for (int i = 0; i < kParts; ++i) partial[i] = load(group(sums, i));
    int v = 0;
    for (; v + kPartialSums <= count; v += kPartialSums) {
        __builtin_prefetch(next + v); // eight numbers are one cache line
        for (int i = 0; i < kParts; ++i) partial[i] += load(group(z + v, i)) * load(group(g + v, i));
    }
    for (int i = 0; i < kParts; ++i) store(partial[i], group(sums, i));
    for (int i = 0; v + i < count; ++i) sums[i] += z[v + i] * g[v + i];
}

template <int lanes> void tanhOnlyKernel(double* x, int count) {
    applyOnly<hyperbolicTangent>(x, count);
}

template <int lanes> void expOnlyKernel(double* x, int count) {
    applyOnly<exponential>(x, count);
}

template void tanhKernel<kLanes>(double*, int, double*);
template void gaussianKernel<kLanes>(double*, int, double*);
template void cubeKernel<kLanes>(double*, int, double*);
template void logCoshKernel<kLanes>(double*, int);
template void productKernel<kLanes>(const double*, const double*, const double*, int, double*);
template void tanhOnlyKernel<kLanes>(double*, int);
template void expOnlyKernel<kLanes>(double*, int);

} // namespace zn
