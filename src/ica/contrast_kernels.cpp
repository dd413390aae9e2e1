#include "ica/contrast_kernels.h"

#include "numeric/lanes.h"

#include <cstdint>

namespace zn {

namespace {

using Bits = std::int64_t __attribute__((vector_size(kLanes * sizeof(std::int64_t))));

// Adding this to a whole number leaves it in the low bits of the sum's mantissa; adding and subtracting rounds.
constexpr double kWholeNumber = 6755399441055744.0; // 1.5 * 2^52
constexpr double kExponentBias = 1023.0;

constexpr double kLog2OfE = 1.4426950408889634;
constexpr double kLn2High = 0x1.62e42feep-1; // 33 bits: a whole number up to 2^20 times it is exact
constexpr double kLn2Low = 0x1.a39ef35793c76p-33;

// 1 / 2!, 1 / 3!, ... 1 / 13!: the series of exp from the square on. For |r| <= ln(2) / 2 what follows is below 2^-57.
constexpr double kSeries[] = {
    1.0 / 2,     1.0 / 6,      1.0 / 24,      1.0 / 120,      1.0 / 720,       1.0 / 5040,
    1.0 / 40320, 1.0 / 362880, 1.0 / 3628800, 1.0 / 39916800, 1.0 / 479001600, 1.0 / 6227020800,
};
constexpr int kTerms = sizeof kSeries / sizeof kSeries[0];

[[gnu::always_inline]] inline Lanes select(Bits condition, Lanes yes, Lanes no) {
    return (Lanes)((condition & (Bits)yes) | (~condition & (Bits)no));
}

[[gnu::always_inline]] inline Lanes absolute(Lanes x) {
    return (Lanes)((Bits)x & (Bits)(std::int64_t{0x7fffffffffffffff} - Bits{}));
}

[[gnu::always_inline]] inline Lanes withSignOf(Lanes magnitude, Lanes x) {
    const Bits sign = (Bits)(-0.0 - Lanes{});
    return (Lanes)((Bits)magnitude | ((Bits)x & sign));
}

// 2^k for whole k from -1022 to 1023.
[[gnu::always_inline]] inline Lanes powerOfTwo(Lanes k) {
    return (Lanes)((Bits)(k + (kWholeNumber + kExponentBias)) << 52);
}

// e^x = 2^k (1 + t): k whole and near x / ln 2.
struct ReducedExp {
    Lanes k;
    Lanes t;
};

[[gnu::always_inline]] inline ReducedExp reduceExp(Lanes x) {
    const Lanes k = (x * kLog2OfE + kWholeNumber) - kWholeNumber;
    const Lanes r = (x - k * kLn2High) - k * kLn2Low;
    Lanes series = broadcast(kSeries[kTerms - 1]);
    for (int i = kTerms - 2; i >= 0; --i) series = series * r + kSeries[i];
    return {k, r + r * r * series};
}

[[gnu::always_inline]] inline Lanes exponential(Lanes x) {
    // Beyond these the result is 0 or infinity; a not-a-number passes both comparisons unchanged.
    x = select((Bits)(x < -746.0), broadcast(-746.0), x);
    x = select((Bits)(x > 710.0), broadcast(710.0), x);
    const ReducedExp e = reduceExp(x);
    // In two steps, because 2^k alone may be beyond the normal numbers while the result is not.
    const Lanes half = (e.k * 0.5 + kWholeNumber) - kWholeNumber;
    return (1.0 + e.t) * powerOfTwo(half) * powerOfTwo(e.k - half);
}

// Below kNearZero the continued fraction of tanh, z = x^2, cut after seven terms: off by less than 1e-17 of the value.
// Elsewhere 1 - 2 / (e^2x + 1). Both as one sum and one division.
[[gnu::always_inline]] inline Lanes hyperbolicTangent(Lanes x) {
    constexpr double kNearZero = 0.625;
    constexpr double kSaturated = 20.0; // tanh rounds to 1 from 19.1 on
    const Lanes a = absolute(x);
    const Bits nearZero = (Bits)(a < kNearZero);

    const Lanes z = a * a;
    const Lanes nearTop = -(a * z) * (((z + 594.0) * z + 45045.0) * z + 675675.0);
    const Lanes nearBottom = (((z + 630.0) * z + 51975.0) * z + 945945.0) * z + 2027025.0;

    const ReducedExp e = reduceExp(2.0 * select((Bits)(a > kSaturated), broadcast(kSaturated), a));
    const Lanes farBottom = (1.0 + e.t) * powerOfTwo(e.k) + 1.0;

    const Lanes top = select(nearZero, nearTop, broadcast(-2.0));
    const Lanes bottom = select(nearZero, nearBottom, farBottom);
    return withSignOf(select(nearZero, a, broadcast(1.0)) + top / bottom, x);
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

constexpr int kParts = kPartialSums / kLanes;

// Eight voxels at a time; of a last, shorter group only the voxels that exist are stored and counted.
template <Contrast (*contrast)(Lanes)> [[gnu::always_inline]] inline void apply(double* y, int count, double* slopes) {
    Lanes sums[kParts];
    for (int i = 0; i < kParts; ++i) sums[i] = load(slopes + i * kLanes);
    int v = 0;
    for (; v + kPartialSums <= count; v += kPartialSums) {
        for (int i = 0; i < kParts; ++i) {
            const Contrast c = contrast(load(y + v + i * kLanes));
            store(c.g, y + v + i * kLanes);
            sums[i] += c.slope;
        }
    }
    for (int i = 0; i < kParts; ++i) store(sums[i], slopes + i * kLanes);

    double rest[kPartialSums] = {};
    double restSlopes[kPartialSums];
    for (int i = 0; v + i < count; ++i) rest[i] = y[v + i];
    for (int i = 0; i < kParts; ++i) {
        const Contrast c = contrast(load(rest + i * kLanes));
        store(c.g, rest + i * kLanes);
        store(c.slope, restSlopes + i * kLanes);
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

template <int lanes> void productKernel(const double* z, const double* next, const double* g, int count, double* sums) {
    Lanes partial[kParts];
    for (int i = 0; i < kParts; ++i) partial[i] = load(sums + i * kLanes);
    int v = 0;
    for (; v + kPartialSums <= count; v += kPartialSums) {
        __builtin_prefetch(next + v); // eight numbers are one cache line
        for (int i = 0; i < kParts; ++i) partial[i] += load(z + v + i * kLanes) * load(g + v + i * kLanes);
    }
    for (int i = 0; i < kParts; ++i) store(partial[i], sums + i * kLanes);
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
template void productKernel<kLanes>(const double*, const double*, const double*, int, double*);
template void tanhOnlyKernel<kLanes>(double*, int);
template void expOnlyKernel<kLanes>(double*, int);

} // namespace zn
