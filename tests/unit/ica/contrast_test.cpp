#include "ica/contrast/contrast.h"

#include "ica/contrast/contrast_kernels.h"

#include "unit/kernel_forms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace zn::test {
namespace {

// Position of a double among all doubles: neighbours differ by one.
std::int64_t rank(double value) {
    std::int64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Special values, values spread over [-range, range], and random bit patterns, including subnormals.
std::vector<double> arguments(double range) {
    std::vector<double> x = {0.0,
                             -0.0,
                             5e-324,
                             -5e-324,
                             std::numeric_limits<double>::min(),
                             std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::lowest(),
                             kInfinity,
                             -kInfinity,
                             0.75,
                             std::nextafter(0.75, 0.0),
                             19.0,
                             20.0,
                             22.5,
                             709.78,
                             709.79,
                             -708.4,
                             -745.1,
                             -745.2};
    std::mt19937_64 random(7);
    for (int i = 0; i < 200'000; ++i) {
        x.push_back(range * (static_cast<double>(random() >> 11U) / 4503599627370496.0 - 1.0));
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isnan(value)) x.push_back(value);
    }
    return x;
}

template <class Library> std::int64_t largestDistance(void (*kernel)(double*, int), Library library, double range) {
    const std::vector<double> x = arguments(range);
    std::vector<double> y = x;
    kernel(y.data(), static_cast<int>(y.size()));
    std::int64_t largest = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        largest = std::max(largest, std::abs(rank(y[i]) - rank(library(x[i]))));
    }
    return largest;
}

TEST(ContrastFunctions, OfTanhAreWithinTwoUlpsOfTheLibrary) {
    const auto library = [](double x) { return std::tanh(x); };
    for (double range : {0.01, 1.0, 20.0}) EXPECT_LE(largestDistance(tanhInPlace, library, range), 2) << range;
}

TEST(ContrastFunctions, OfExpAreWithinTwoUlpsOfTheLibrary) {
    const auto library = [](double x) { return std::exp(x); };
    for (double range : {1.0, 50.0, 746.0}) EXPECT_LE(largestDistance(expInPlace, library, range), 2) << range;
}

TEST(ContrastFunctions, OfLogCoshAreWithinRounding) {
    std::vector<double> x = {0.0, -0.0, 1e-300, 0.1, -0.5, 1.0, -3.0, 19.0, -700.0, 1e300};
    for (int i = -4000; i < 4000; ++i) x.push_back(i * 0.003);
    std::vector<double> y = x;
    logCoshInPlace(y.data(), static_cast<int>(y.size()));
    for (std::size_t i = 0; i < x.size(); ++i) {
        const double magnitude = std::fabs(x[i]);
        const double expected = magnitude + std::log1p(std::exp(-2.0 * magnitude)) - std::log(2.0);
        EXPECT_NEAR(y[i], expected, 4e-16 * (1.0 + magnitude)) << x[i];
    }
}

TEST(ContrastFunctions, KeepTheSignOfZero) {
    double x[2] = {0.0, -0.0};
    tanhInPlace(x, 2);
    EXPECT_FALSE(std::signbit(x[0]));
    EXPECT_TRUE(std::signbit(x[1]));
}

TEST(ContrastFunctions, PropagateNaN) {
    double x[3] = {1.0, std::numeric_limits<double>::quiet_NaN(), 2.0};
    tanhInPlace(x, 3);
    EXPECT_TRUE(std::isnan(x[1]));
    EXPECT_FALSE(std::isnan(x[0]) || std::isnan(x[2]));
    expInPlace(x, 3);
    EXPECT_TRUE(std::isnan(x[1]));
}

std::vector<double> randomNumbers(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<double> numbers(count);
    for (double& number : numbers) number = 6.0 * static_cast<double>(random()) / 4294967296.0 - 3.0;
    return numbers;
}

struct Sums {
    std::vector<double> g;
    std::vector<double> sums;
    double slope = 0;
};

Sums sumsOf(Nonlinearity nonlinearity, const std::vector<double>& z, int dimension, const std::vector<double>& y) {
    Sums result{y, std::vector<double>(static_cast<std::size_t>(dimension)), 0};
    sumContrast(nonlinearity, z.data(), dimension, static_cast<int>(y.size()), result.g.data(), result.sums.data(),
                &result.slope);
    return result;
}

// The plain form: the library's functions, one sum over the voxels.
Sums plainSumsOf(Nonlinearity nonlinearity, const std::vector<double>& z, int dimension, const std::vector<double>& y) {
    Sums result{y, std::vector<double>(static_cast<std::size_t>(dimension), 0.0), 0};
    for (double& value : result.g) {
        if (nonlinearity == Nonlinearity::tanh) {
            value = std::tanh(value);
            result.slope += 1 - value * value;
        } else {
            const double bell = std::exp(-value * value / 2);
            result.slope += (1 - value * value) * bell;
            value *= bell;
        }
    }
    for (std::size_t k = 0; k < result.sums.size(); ++k) {
        for (std::size_t v = 0; v < y.size(); ++v) result.sums[k] += z[k * y.size() + v] * result.g[v];
    }
    return result;
}

TEST(ApplyContrast, EqualsThePlainFormUpToRounding) {
    for (Nonlinearity nonlinearity : {Nonlinearity::tanh, Nonlinearity::gaussian, Nonlinearity::cube}) {
        for (std::size_t voxels : {1U, 8U, 13U, 512U}) {
            std::vector<double> y = randomNumbers(voxels, 1);
            double expectedSlope = 0.0;
            std::vector<double> expected = plainSumsOf(nonlinearity, {}, 0, y).g;
            if (nonlinearity == Nonlinearity::cube) {
                for (std::size_t v = 0; v < voxels; ++v) {
                    expected[v] = y[v] * y[v] * y[v];
                    expectedSlope += 3 * y[v] * y[v];
                }
            } else {
                expectedSlope = plainSumsOf(nonlinearity, {}, 0, y).slope;
            }
            const double slope = applyContrast(nonlinearity, y.data(), static_cast<int>(voxels));
            EXPECT_NEAR(slope, expectedSlope, 1e-12 * static_cast<double>(voxels));
            for (std::size_t v = 0; v < voxels; ++v) EXPECT_NEAR(y[v], expected[v], 1e-14);
        }
    }
}

TEST(SumContrast, EqualsThePlainFormUpToRounding) {
    for (Nonlinearity nonlinearity : {Nonlinearity::tanh, Nonlinearity::gaussian}) {
        for (std::size_t voxels : {1U, 7U, 8U, 9U, 1023U, 1024U, 1025U, 5003U}) {
            const int dimension = 3;
            const auto y = randomNumbers(voxels, 1);
            const auto z = randomNumbers(voxels * 3, 2);
            const Sums ours = sumsOf(nonlinearity, z, dimension, y);
            const Sums plain = plainSumsOf(nonlinearity, z, dimension, y);
            // every term is below 3; the rounding error is at most about the number of terms times 2^-53 of that
            const double tolerance = 3e-16 * 3 * static_cast<double>(voxels) + 1e-15;
            EXPECT_NEAR(ours.slope, plain.slope, tolerance) << voxels;
            for (std::size_t k = 0; k < 3; ++k) EXPECT_NEAR(ours.sums[k], plain.sums[k], tolerance) << voxels;
            for (std::size_t v = 0; v < voxels; ++v) EXPECT_NEAR(ours.g[v], plain.g[v], 4.5e-16) << v;
        }
    }
}

TEST(SumContrast, AddsEightPartialSumsInAFixedOrder) {
    const std::size_t voxels = 2051;
    const auto y = randomNumbers(voxels, 3);
    const auto z = randomNumbers(voxels, 4);
    const Sums ours = sumsOf(Nonlinearity::tanh, z, 1, y);
    double partial[8] = {};
    double slopes[8] = {};
    for (std::size_t v = 0; v < voxels; ++v) {
        partial[v % 8] += z[v] * ours.g[v];
        slopes[v % 8] += 1.0 - ours.g[v] * ours.g[v];
    }
    const auto total = [](const double* p) {
        return ((p[0] + p[1]) + (p[2] + p[3])) + ((p[4] + p[5]) + (p[6] + p[7]));
    };
    EXPECT_EQ(ours.sums[0], total(partial));
    EXPECT_EQ(ours.slope, total(slopes));
}

template <class Form> class ContrastKernels : public KernelForm<Form> {};
TYPED_TEST_SUITE(ContrastKernels, KernelForms, NameOfKernelForm);

TYPED_TEST(ContrastKernels, MatchTheBaselineBitForBit) {
    constexpr int lanes = TypeParam::value;
    const int voxels = 1003;
    const auto compare = [&](void (*baseline)(double*, int, double*), void (*form)(double*, int, double*)) {
        std::vector<double> a = randomNumbers(voxels, 5);
        std::vector<double> b = a;
        double slopesA[kPartialSums] = {};
        double slopesB[kPartialSums] = {};
        baseline(a.data(), voxels, slopesA);
        form(b.data(), voxels, slopesB);
        EXPECT_EQ(std::memcmp(a.data(), b.data(), voxels * sizeof(double)), 0);
        EXPECT_EQ(std::memcmp(slopesA, slopesB, sizeof slopesA), 0);
        double sumsA[kPartialSums] = {};
        double sumsB[kPartialSums] = {};
        productKernel<2>(a.data(), a.data(), b.data(), voxels, sumsA);
        productKernel<lanes>(a.data(), a.data(), b.data(), voxels, sumsB);
        EXPECT_EQ(std::memcmp(sumsA, sumsB, sizeof sumsA), 0);
    };
    compare(tanhKernel<2>, tanhKernel<lanes>);
    compare(gaussianKernel<2>, gaussianKernel<lanes>);
}

} // namespace
} // namespace zn::test
