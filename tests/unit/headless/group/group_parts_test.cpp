// Normal deviates, dual regression and the common mask on small cases.
#include "headless/group/common_mask.h"
#include "headless/group/dual_regression.h"
#include "headless/group/normal_deviate.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::headless {
namespace {

using testing::ElementsAre;

TEST(NormalDeviate, HasTheTailProbabilityOfStudentsT) {
    // scipy 1.10: norm.isf(t.sf(value, freedom))
    EXPECT_NEAR(normalDeviate(2.0, 20), 1.8862183596, 1e-8);
    EXPECT_NEAR(normalDeviate(10.0, 20), 5.9228662403, 1e-6);
    EXPECT_NEAR(normalDeviate(-3.5, 120), -3.4082507948, 1e-9);
    EXPECT_EQ(normalDeviate(0.0, 50), 0.0);
}

TEST(DualRegression, FindsTheCoursesAndMapsOfDataWithoutNoise) {
    // Two maps of mean 0 and variance 1 over four voxels, orthogonal; two courses of mean 0 over six volumes.
    const std::vector<float> maps = {1, 1, -1, -1, 1, -1, 1, -1};
    const std::vector<std::vector<float>> courses = {{2, -2, 2, -2, 2, -2}, {3, 3, 0, 0, -3, -3}};
    std::vector<float> series;
    for (std::size_t v = 0; v < 4; ++v) {
        for (std::size_t t = 0; t < 6; ++t) series.push_back(maps[v] * courses[0][t] + maps[4 + v] * courses[1][t]);
    }
    WorkerThreads team(2);
    const auto result = regressDually({series.data(), 6, maps.data(), 2, 4, 0}, team);
    ASSERT_TRUE(result.has_value());
    EXPECT_NEAR(result->amplitudes[0], 2.0, 1e-12);
    EXPECT_NEAR(result->amplitudes[1], std::sqrt(36.0 / 6.0), 1e-12);
    EXPECT_NEAR(result->courses[0], 1.0, 1e-12);
    EXPECT_NEAR(result->courses[6], 3.0 / std::sqrt(6.0), 1e-12);
    for (std::size_t i = 0; i < 8; ++i) { // the maps times the amplitudes
        EXPECT_NEAR(result->effect[i], static_cast<double>(maps[i]) * result->amplitudes[i / 4], 1e-6) << i;
    }
    EXPECT_NEAR(result->explainedPercent, 100.0, 1e-9);
    EXPECT_EQ(result->freedom, 3); // 6 volumes, the mean and two courses
}

TEST(DualRegression, NeedsIndependentMapsAndDegreesOfFreedom) {
    const std::vector<float> twice = {1, -1, 1, -1, 1, -1, 1, -1};
    const std::vector<float> series(4 * 6, 1.0f);
    WorkerThreads team(1);
    EXPECT_FALSE(regressDually({series.data(), 6, twice.data(), 2, 4, 0}, team).has_value());
    EXPECT_FALSE(regressDually({series.data(), 6, twice.data(), 1, 4, 4}, team).has_value());
}

TEST(CommonMask, HoldsTheVoxelsOfAllRunsAndSaysWhoLacksThem) {
    const CommonMask mask =
        commonMask({{true, true, true, false}, {true, true, true, false}, {true, false, false, true}});
    EXPECT_THAT(mask.voxels, ElementsAre(1, 0, 0, 0));
    EXPECT_EQ(mask.count, 1);
    EXPECT_EQ(mask.median, 3);
    EXPECT_THAT(mask.lacking, ElementsAre(0, 0, 2));
}

} // namespace
} // namespace zn::headless
