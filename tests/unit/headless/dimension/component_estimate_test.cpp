#include "headless/dimension/component_estimate.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// Three directions that stand out and 21 evenly spaced ones.
std::vector<double> threeAndNoise() {
    std::vector<double> values = {900, 60, 25};
    for (int i = 20; i >= 0; --i) values.push_back(1.0 + 0.05 * i);
    return values;
}

TEST(ComponentEstimate, EveryCriterionFindsDirectionsThatStandOut) {
    const ComponentEstimate estimate = eigenvalueCriteria(threeAndNoise(), 5000);
    EXPECT_EQ(estimate.byThreshold, 3);
    EXPECT_EQ(estimate.byMdl, 3);
    EXPECT_EQ(estimate.byLaplace, 3);
}

TEST(ComponentEstimate, TheEffectiveSampleSizeFollowsFromTheScatterOfTheNoise) {
    // 21 values around 1.5 in steps of 0.05: variance 0.0025 (21^2 - 1) / 12; 21 * 1.5^2 / variance.
    EXPECT_NEAR(eigenvalueCriteria(threeAndNoise(), 5000).effectiveSamples, 515.454545454545, 1e-9);
    EXPECT_EQ(eigenvalueCriteria(threeAndNoise(), 400).effectiveSamples, 400.0); // never more than the voxels
}

TEST(ComponentEstimate, TheCurvesFollowTheFormulas) {
    // Computed from the two formulas with numpy and scipy.special.gammaln at 515.4545... samples.
    const ComponentEstimate estimate = eigenvalueCriteria(threeAndNoise(), 5000);
    ASSERT_EQ(estimate.mdl.size(), 6U);
    EXPECT_NEAR(estimate.mdl[0], 11451.4676171, 1e-6);
    EXPECT_NEAR(estimate.mdl[2], 650.60339707, 1e-6);
    EXPECT_NEAR(estimate.mdl[5], 945.401814162, 1e-6);
    EXPECT_NEAR(estimate.laplace[0], -11479.542567, 1e-5);
    EXPECT_NEAR(estimate.laplace[2], -6113.71014718, 1e-5);
    EXPECT_NEAR(estimate.laplace[5], -6131.29075998, 1e-5);
}

TEST(ComponentEstimate, EigenvaluesAtRoundingLevelAreIgnored) {
    std::vector<double> values = threeAndNoise();
    values.insert(values.end(), {1e-13, 0.0, -1e-13});
    const ComponentEstimate estimate = eigenvalueCriteria(values, 5000);
    EXPECT_EQ(estimate.mdl, eigenvalueCriteria(threeAndNoise(), 5000).mdl);
    EXPECT_EQ(estimate.byMdl, 3);
}

TEST(ComponentEstimate, EstimatesAtLeastOneComponent) {
    std::vector<double> descending;
    for (int i = 12; i > 0; --i) descending.push_back(1.0 + 0.01 * i);
    for (const std::vector<double>& values : {std::vector<double>(12, 1.0), descending}) { // up to 3 are possible
        const ComponentEstimate estimate = eigenvalueCriteria(values, 1000);
        EXPECT_EQ(estimate.byThreshold, 1); // none of them is above it
        EXPECT_EQ(estimate.byMdl, 1);
    }
}

TEST(ComponentEstimate, CriteriaDisagreeFromAFactorOfTwo) {
    ComponentEstimate estimate;
    estimate.parallel.count = 12;
    estimate.byThreshold = 7;
    estimate.byMdl = 7;
    EXPECT_FALSE(estimate.disagree());
    estimate.byMdl = 6;
    EXPECT_TRUE(estimate.disagree());
}

} // namespace
} // namespace zn::test
