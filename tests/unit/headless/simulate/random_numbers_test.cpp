#include "headless/simulate/random_numbers.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(RandomNumbers, UniformNumbersAreTheTopBitsOfTheStandardsGenerator) {
    // The standard fixes the 10000th output of a default-seeded (5489) mt19937_64: 9981545732273789042.
    RandomNumbers random(5489);
    for (int i = 1; i < 10000; ++i) random.uniform();
    EXPECT_EQ(random.uniform(), static_cast<double>(9981545732273789042ULL >> 11) / 9007199254740992.0);
}

TEST(RandomNumbers, NormalNumbersHaveTheMomentsOfTheirDistribution) {
    RandomNumbers random(1);
    constexpr int kCount = 200000;
    double m1 = 0.0, m2 = 0.0, m3 = 0.0, m4 = 0.0;
    for (int i = 0; i < kCount; ++i) {
        const double x = random.normal();
        m1 += x / kCount;
        m2 += x * x / kCount;
        m3 += x * x * x / kCount;
        m4 += x * x * x * x / kCount;
    }
    // Tolerance: five standard errors, sqrt(1, 2, 15, 96 over the count).
    EXPECT_NEAR(m1, 0.0, 5 * std::sqrt(1.0 / kCount));
    EXPECT_NEAR(m2, 1.0, 5 * std::sqrt(2.0 / kCount));
    EXPECT_NEAR(m3, 0.0, 5 * std::sqrt(15.0 / kCount));
    EXPECT_NEAR(m4, 3.0, 5 * std::sqrt(96.0 / kCount));
}

} // namespace
} // namespace zn::test
