#include "fingerprint/mean_and_variance.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace zn::test {
namespace {

std::pair<float, float> meanAndVarianceOf(const Series& series) {
    float mean = 0;
    float variance = 0;
    meanAndVariance(fromOne(series).get(), static_cast<int>(series.size()), &mean, &variance);
    return {mean, variance};
}

TEST(MeanAndVariance, OfFourNumbersByHand) {
    const auto [mean, variance] = meanAndVarianceOf({1, 2, 3, 4});
    EXPECT_EQ(mean, 2.5f);
    EXPECT_FLOAT_EQ(variance, 5.0f / 3.0f); // (2.25 + 0.25 + 0.25 + 2.25) / 3
}

TEST(MeanAndVariance, OfASeriesAsInDoublePrecision) {
    const auto [mean, variance] = meanAndVarianceOf(testSeries(50, 0.2));
    EXPECT_NEAR(mean, 0.25989481508731843, 1e-6); // numpy: x.mean(), x.var(ddof=1)
    EXPECT_NEAR(variance, 0.6071120816370505, 1e-6);
}

TEST(MeanAndVariance, CorrectsForAMeanThatIsRounded) {
    // The mean of 16777216 and twice 16777218, 16777217 1/3, is not a float and is rounded to 16777216 or 16777218. The
    // deviations from it do not add up to 0, and their sum corrects the sum of squares: (0 + 4 + 4 - 4^2 / 3) / 2.
    const auto [mean, variance] = meanAndVarianceOf({16777216.0f, 16777218.0f, 16777218.0f});
    EXPECT_TRUE(mean == 16777216.0f || mean == 16777218.0f) << mean;
    EXPECT_FLOAT_EQ(variance, 4.0f / 3.0f);
}

TEST(MeanAndVariance, OfOneValueHasNaNVariance) {
    const auto [mean, variance] = meanAndVarianceOf({7});
    EXPECT_EQ(mean, 7.0f);
    EXPECT_TRUE(std::isnan(variance));
}

TEST(MeanAndVariance, OfAConstantAreTheConstantAndZero) {
    const auto [mean, variance] = meanAndVarianceOf(Series(64, 0.5f));
    EXPECT_EQ(mean, 0.5f);
    EXPECT_EQ(variance, 0.0f);
}

TEST(MeanAndVariance, AddsInIndexOrder) {
    // In index order 2^24 + 1 stays 2^24, twice; from the other end 1 + 1 + 2^24 would be 2^24 + 2.
    const auto [mean, variance] = meanAndVarianceOf({16777216.0f, 1.0f, 1.0f, 0.0f});
    EXPECT_EQ(mean, 16777216.0f / 4);
    EXPECT_GT(variance, 0.0f);
}

TEST(MeanAndVariance, OfRowsSideBySideEqualsRowByRow) {
    for (const int count : {1, 7, 8, 9, 19}) {
        const auto rows = awkwardRows(count, 300, 1);
        const OffsetVector<float> mean(0, count - 1);
        const OffsetVector<float> variance(0, count - 1);
        rowMeansAndVariances(matrixOf(rows).get(), count, 300, mean.get(), variance.get());
        for (int i = 0; i < count; ++i) {
            const auto expected = meanAndVarianceOf(rows[static_cast<std::size_t>(i)]);
            EXPECT_TRUE(same(mean[i], expected.first)) << i;
            EXPECT_TRUE(same(variance[i], expected.second)) << i;
        }
    }
}

TEST(MeanAndVariance, SumOfSquaresIsNotCorrected) {
    const OffsetMatrix<float> row = matrixOf({{1, 2, 3, 4}});
    float mean = 0;
    float squares = 0;
    rowMeansAndSquares(row.get(), 1, 4, &mean, &squares);
    EXPECT_EQ(mean, 2.5f);
    EXPECT_EQ(squares, 5.0f); // 2.25 + 0.25 + 0.25 + 2.25
}

} // namespace
} // namespace zn::test
