#include "fingerprint/lag_one_autocorrelation.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

struct Autocorrelation {
    Series withSign;
    Series magnitude;
};

Autocorrelation autocorrelation(const std::vector<Series>& courses) {
    const auto k = static_cast<int>(courses.size());
    const auto t = static_cast<int>(courses.front().size());
    const OffsetMatrix<float> timeCourses = matrixWithColumns(courses);
    Autocorrelation result{Series(courses.size()), Series(courses.size())};
    lagOneAutocorrelation(timeCourses.get(), t, k, result.withSign.data(), result.magnitude.data());
    return result;
}

TEST(LagOneAutocorrelation, OfASeriesAsInDoublePrecision) {
    // numpy: z = (x - x.mean()) / x.std(ddof=1); (z[:-1] * z[1:]).sum() / (z[:-1]**2).sum()
    Series alternating;
    for (int j = 1; j <= 20; ++j) alternating.push_back(static_cast<float>(j % 2 == 1 ? j : -j));
    const auto rising = autocorrelation({testSeries(60, 0.7)});
    EXPECT_NEAR(rising.withSign[0], 0.6400983131567093, 1e-5);
    EXPECT_NEAR(rising.magnitude[0], 0.6400983131567093, 1e-5);
    const auto turning = autocorrelation({alternating});
    EXPECT_NEAR(turning.withSign[0], -1.0688198007847873, 1e-5);
    EXPECT_NEAR(turning.magnitude[0], 1.0688198007847873, 1e-5);
}

TEST(LagOneAutocorrelation, OfThreeVolumesByHand) {
    // 0, 1, 2 standardise to -1, 0, 1: (0 + 0) / (1 + 0); 0, 2, 1 to -1, 1, 0: (-1 + 0) / (1 + 1).
    const auto result = autocorrelation({{0, 1, 2}, {0, 2, 1}});
    EXPECT_EQ(result.magnitude[0], 0.0f);
    EXPECT_EQ(result.withSign[1], -0.5f);
}

TEST(LagOneAutocorrelation, OfAConstantIsNaN) {
    const auto result = autocorrelation({Series(30, 0.5f), testSeries(30, 0.1)});
    EXPECT_TRUE(std::isnan(result.withSign[0]));
    EXPECT_TRUE(std::isnan(result.magnitude[0]));
    EXPECT_FALSE(std::isnan(result.magnitude[1]));
}

TEST(LagOneAutocorrelation, OfOneVolumeIsNaN) {
    EXPECT_TRUE(std::isnan(autocorrelation({{1}}).magnitude[0]));
}

TEST(LagOneAutocorrelation, OfManyComponentsEqualsOneByOne) {
    const auto courses = awkwardRows(19, 70, 9);
    const auto together = autocorrelation(courses);
    for (std::size_t i = 0; i < courses.size(); ++i) {
        EXPECT_TRUE(same(together.withSign[i], autocorrelation({courses[i]}).withSign[0])) << i;
    }
}

} // namespace
} // namespace zn::test
