#include "fingerprint/row_moments.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

float kurtosisOf(const Series& row) {
    float kurtosis = 0;
    rowKurtosis(matrixOf({row}).get(), 1, static_cast<int>(row.size()), &kurtosis);
    return kurtosis;
}

float skewnessOf(const Series& row) {
    float skewness = 0;
    rowSkewness(matrixOf({row}).get(), 1, static_cast<int>(row.size()), &skewness);
    return skewness;
}

TEST(RowKurtosis, OmitsTheLastValueFromTheSumButNotFromTheDivisor) {
    // Mean 4, variance 50 / 3; deviations -3, -2, -1 and the last, 6: (81 + 16 + 1) / (50 / 3)^2 / 4 - 3.
    EXPECT_FLOAT_EQ(kurtosisOf({1, 2, 3, 10}), static_cast<float>(98.0 * 9 / 2500 / 4 - 3));
}

TEST(RowSkewness, AddsTheLastValueUnchanged) {
    // (-27 - 8 - 1 + 10) / 4 / (50 / 3)^1.5
    EXPECT_FLOAT_EQ(skewnessOf({1, 2, 3, 10}), static_cast<float>(-26.0 / 4 / std::pow(50.0 / 3, 1.5)));
}

TEST(RowKurtosis, OfASeriesAsInDoublePrecision) {
    EXPECT_NEAR(kurtosisOf(testSeries(50, 0.2)), -0.9459325522181019, 1e-5); // numpy, the formula of the header
}

TEST(RowSkewness, OfASeriesAsInDoublePrecision) {
    EXPECT_NEAR(skewnessOf(testSeries(50, 0.2)), -0.03119131667230252, 1e-6); // numpy, the formula of the header
}

TEST(RowKurtosis, OfOneValueIsMinusThree) {
    EXPECT_TRUE(std::isnan(skewnessOf({42})));
    EXPECT_EQ(kurtosisOf({42}), -3.0f);
    EXPECT_EQ(kurtosisOf({kNaN}), -3.0f);
}

TEST(RowMoments, OfAConstantAreNotFinite) {
    EXPECT_TRUE(std::isnan(kurtosisOf(Series(50, 0.5f)))); // 0 / 0
    EXPECT_TRUE(std::isinf(skewnessOf(Series(50, 0.5f)))); // the unchanged last value / 0
    EXPECT_TRUE(std::isnan(skewnessOf(Series(50, 0.0f)))); // 0 / 0
}

TEST(RowMoments, OfRowsSideBySideEqualRowByRow) {
    const int count = 19; // two groups and three single rows
    const auto rows = awkwardRows(count, 300, 5);
    const OffsetVector<float> kurtosis(0, count - 1);
    const OffsetVector<float> skewness(0, count - 1);
    rowKurtosis(matrixOf(rows).get(), count, 300, kurtosis.get());
    rowSkewness(matrixOf(rows).get(), count, 300, skewness.get());
    for (int i = 0; i < count; ++i) {
        EXPECT_TRUE(same(kurtosis[i], kurtosisOf(rows[static_cast<std::size_t>(i)]))) << i;
        EXPECT_TRUE(same(skewness[i], skewnessOf(rows[static_cast<std::size_t>(i)]))) << i;
    }
}

} // namespace
} // namespace zn::test
