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

std::vector<Stability> stabilityOf(const std::vector<double>& similarity, const std::vector<int>& run, int clusters) {
    return headless::stabilityOf(clustersOf(similarity, run, clusters), run.size());
}

TEST(Stability, IsTheMeanWithinMinusTheMeanBetween) {
    const auto result = stabilityOf(kFour, {0, 0, 1, 1}, 2);
    ASSERT_EQ(result.size(), 4U);
    EXPECT_NEAR(result[0].index, (1.0 + 0.9 + 0.9 + 1.0) / 4 - 0.1, 1e-15);
    EXPECT_NEAR(result[1].index, (1.0 + 0.8 + 0.8 + 1.0) / 4 - 0.1, 1e-15);
    EXPECT_EQ(result[2].index, result[0].index);
    for (const auto& stability : result) EXPECT_EQ(stability.runs, 2);
}

TEST(Stability, ThreeClustersSeparateTheLeastSimilar) {
    const auto result = stabilityOf(kFour, {0, 0, 1, 1}, 3);
    EXPECT_NEAR(result[0].index, 0.85, 1e-15);
    EXPECT_TRUE(std::isnan(result[1].index));
    EXPECT_EQ(result[1].runs, 1);
}

// Of 0, 1 and 2, component 1 is the most similar to the others: 0.9 + 0.8 against 0.9 + 0.7 and 0.8 + 0.7.
TEST(Clusters, HaveTheMemberMostSimilarToTheOthersAsCentrotype) {
    const std::vector<double> similarity = {1.0, 0.9, 0.7, 0.1, //
                                            0.9, 1.0, 0.8, 0.1, //
                                            0.7, 0.8, 1.0, 0.1, //
                                            0.1, 0.1, 0.1, 1.0};
    const auto clusters = clustersOf(similarity, {0, 1, 2, 0}, 2);
    ASSERT_EQ(clusters.size(), 2U);
    EXPECT_EQ(clusters[0].centrotype, 1U);
    EXPECT_EQ(clusters[0].stability.runs, 3);
    EXPECT_EQ(clusters[1].members, std::vector<std::size_t>{3}) << "a single component comes last";
}

TEST(Clusters, AreInDescendingOrderOfStability) {
    const auto clusters = clustersOf(kFour, {0, 0, 1, 1}, 2);
    ASSERT_EQ(clusters.size(), 2U);
    EXPECT_EQ(clusters[0].members, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(clusters[1].members, (std::vector<std::size_t>{1, 3}));
}

TEST(Stability, LinksByTheAverageRatherThanTheNearest) {
    // 0 and 1 are merged first. Their similarities to 2 are 0.8 and 0.2, on average 0.5; that of 2 and 3 is 0.6.
    // Average linkage merges 2 with 3, whereas the nearest neighbour would merge it with 0 and 1.
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
