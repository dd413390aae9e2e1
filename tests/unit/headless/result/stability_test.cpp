#include "headless/result/stability.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// Two runs of two components: 0 and 2 are alike (0.9), 1 and 3 a little less (0.8), the rest 0.1.
const std::vector<double> kFour = {1.0, 0.1, 0.9, 0.1, //
                                   0.1, 1.0, 0.1, 0.8, //
                                   0.9, 0.1, 1.0, 0.1, //
                                   0.1, 0.8, 0.1, 1.0};

TEST(Stability, IsTheMeanWithinLessTheMeanBetweenByHand) {
    const auto result = stabilityOf(kFour, {0, 0, 1, 1}, 2);
    ASSERT_EQ(result.size(), 4U);
    EXPECT_NEAR(result[0].index, (1.0 + 0.9 + 0.9 + 1.0) / 4 - 0.1, 1e-15);
    EXPECT_NEAR(result[1].index, (1.0 + 0.8 + 0.8 + 1.0) / 4 - 0.1, 1e-15);
    EXPECT_EQ(result[2].index, result[0].index);
    for (const auto& stability : result) EXPECT_EQ(stability.runs, 2);
}

TEST(Stability, ACutIntoThreeLeavesTheLeastAlikeAlone) {
    const auto result = stabilityOf(kFour, {0, 0, 1, 1}, 3);
    EXPECT_NEAR(result[0].index, 0.85, 1e-15);
    EXPECT_TRUE(std::isnan(result[1].index));
    EXPECT_EQ(result[1].runs, 1);
}

TEST(Stability, LinksByTheAverageAndNotByTheNearest) {
    // 0 and 1 join first. To 2, their similarities are 0.8 and 0.2, on average 0.5; 3 is 0.6 like 2. The average joins
    // 2 with 3, the nearest neighbour would have joined it with 0 and 1.
    const std::vector<double> similarity = {1.0, 0.9, 0.8, 0.0, //
                                            0.9, 1.0, 0.2, 0.0, //
                                            0.8, 0.2, 1.0, 0.6, //
                                            0.0, 0.0, 0.6, 1.0};
    const auto result = stabilityOf(similarity, {0, 1, 0, 1}, 2);
    EXPECT_NEAR(result[0].index, 0.95 - (0.8 + 0.2) / 4, 1e-15);
    EXPECT_NEAR(result[2].index, 0.8 - (0.8 + 0.2) / 4, 1e-15);
}

} // namespace
} // namespace zn::test
