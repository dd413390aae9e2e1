#include "fingerprint/match_design_matrix.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

constexpr int kVolumes = 60;

struct DesignMatch {
    Series correlation;
    Series index;
    Series rms;
};

// Predictors that are not given are 0, up to sixteen.
DesignMatch matchDesign(const std::vector<Series>& courses, std::vector<Series> predictors) {
    const auto t = static_cast<int>(courses.front().size());
    const auto k = static_cast<int>(courses.size());
    predictors.resize(16, Series(courses.front().size(), 0.0f));
    const OffsetMatrix<float> design = matrixWithColumns(predictors);
    const OffsetMatrix<float> timeCourses = matrixWithColumns(courses);
    DesignMatch result{Series(courses.size()), Series(courses.size()), Series(courses.size())};
    matchDesignMatrix(design.get(), timeCourses.get(), 16, t, k, result.correlation.data(), result.index.data(),
                      result.rms.data());
    return result;
}

std::vector<Series> threePredictors() {
    return {testSeries(kVolumes, 0.0), testSeries(kVolumes, 1.0), testSeries(kVolumes, 2.0)};
}

TEST(MatchDesignMatrix, FindsThePredictorThatEqualsTheTimeCourse) {
    const DesignMatch result = matchDesign({testSeries(kVolumes, 2.0)}, threePredictors());
    EXPECT_FLOAT_EQ(result.correlation[0], 1.0f);
    EXPECT_EQ(result.index[0], 3.0f);
}

TEST(MatchDesignMatrix, IgnoresTheSign) {
    Series inverted = testSeries(kVolumes, 1.0);
    for (float& value : inverted) value = -value;
    const DesignMatch result = matchDesign({inverted}, threePredictors());
    EXPECT_FLOAT_EQ(result.correlation[0], 1.0f);
    EXPECT_EQ(result.index[0], 2.0f);
}

TEST(MatchDesignMatrix, TakesTheLowerOfTwoEqualPredictors) {
    const Series x = testSeries(kVolumes, 0.5);
    Series inverted = x;
    for (float& value : inverted) value = -value;
    EXPECT_EQ(matchDesign({x}, {testSeries(kVolumes, 1.0), inverted, x}).index[0], 2.0f);
}

TEST(MatchDesignMatrix, WithoutPredictorsReportsTheFirst) {
    const DesignMatch result = matchDesign({testSeries(kVolumes, 0.5)}, {});
    EXPECT_EQ(result.correlation[0], 0.0f);
    EXPECT_EQ(result.index[0], 1.0f);
}

TEST(MatchDesignMatrix, OfAConstantTimeCourseIsNoMatch) {
    const DesignMatch result = matchDesign({Series(kVolumes, 0.5f), Series(kVolumes, kNaN)}, threePredictors());
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(result.correlation[i], 0.0f);
        EXPECT_EQ(result.index[i], 1.0f);
    }
    EXPECT_EQ(result.rms[0], 0.0f);
    EXPECT_TRUE(std::isnan(result.rms[1]));
}

TEST(MatchDesignMatrix, GivesTheSampleStandardDeviation) {
    EXPECT_FLOAT_EQ(matchDesign({{1, 2, 3, 4}}, {}).rms[0], static_cast<float>(std::sqrt(5.0 / 3)));
}

TEST(MatchDesignMatrix, UsesTheSixteenthPredictor) {
    std::vector<Series> predictors(15, Series(kVolumes, 0.0f));
    predictors.push_back(testSeries(kVolumes, 0.5));
    EXPECT_EQ(matchDesign({testSeries(kVolumes, 0.5)}, predictors).index[0], 16.0f);
}

} // namespace
} // namespace zn::test
