#include "fingerprint/correlate.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

float correlation(const Series& x, const Series& y) {
    float r = -9;
    correlate(fromOne(x).get(), fromOne(y).get(), static_cast<int>(x.size()), &r);
    return r;
}

TEST(Correlate, OfThreePointsByHand) {
    // Deviations -1, 0, 1 and -1, 1, 0: 1 / sqrt(2 * 2).
    EXPECT_EQ(correlation({1, 2, 3}, {4, 6, 5}), 0.5f);
}

TEST(Correlate, OfTwoSeriesMatchesDoublePrecision) {
    EXPECT_NEAR(correlation(testSeries(50, 0.2), testSeries(50, 1.1)), 0.5003764751353872, 1e-6); // np.corrcoef
}

TEST(Correlate, OfASeriesWithItselfOrItsNegativeIsOne) {
    Series x = testSeries(80, 0.3);
    EXPECT_FLOAT_EQ(correlation(x, x), 1.0f);
    Series y = x;
    for (float& value : y) value = 7 - 2 * value;
    EXPECT_FLOAT_EQ(correlation(x, y), -1.0f);
}

TEST(Correlate, WithAConstantIsZero) {
    EXPECT_EQ(correlation(Series(40, 0.5f), testSeries(40, 0.3)), 0.0f);
    EXPECT_EQ(correlation(testSeries(40, 0.3), Series(40, 0.0f)), 0.0f);
}

TEST(Correlate, WithANaNIsZero) {
    EXPECT_EQ(correlation(Series(40, kNaN), testSeries(40, 0.3)), 0.0f); // the root is not above 0
}

TEST(Correlate, OfRowsSideBySideEqualsPairByPair) {
    const int n = 1100; // two tiles and a piece of one
    for (const int m : {1, 15, 16, 17, 37}) {
        const auto x = awkwardRows(9, n, 100);
        const auto y = awkwardRows(m, n, 200);
        const OffsetMatrix<float> r(0, 8, 0, m - 1);
        correlateRows(matrixOf(x).get(), 9, matrixOf(y).get(), m, n, r.get());
        for (int i = 0; i < 9; ++i) {
            for (int j = 0; j < m; ++j) {
                const float expected = correlation(x[static_cast<std::size_t>(i)], y[static_cast<std::size_t>(j)]);
                EXPECT_TRUE(same(r[i][j], expected)) << i << " with " << j << " of " << m;
            }
        }
    }
}

} // namespace
} // namespace zn::test
