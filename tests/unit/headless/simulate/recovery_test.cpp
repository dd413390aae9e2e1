#include "headless/simulate/recovery.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(Recovery, TakesTheLargestCorrelationWhateverItsSign) {
    const std::vector<float> truth = {0, 0, 1, 5, 5, 1};           // two maps of three voxels
    const std::vector<float> found = {1, 2, 1, 0, 0, -2, 1, 1, 0}; // three maps
    const std::vector<unsigned char> mask = {1, 1, 1};
    const auto recoveries = recover(truth, found, mask);
    ASSERT_EQ(recoveries.size(), 2U);
    EXPECT_EQ(recoveries[0].component, 1);
    EXPECT_NEAR(recoveries[0].correlation, 1.0, 1e-12);
    EXPECT_EQ(recoveries[1].component, 1);
    EXPECT_NEAR(recoveries[1].correlation, 1.0, 1e-12);
}

TEST(Recovery, ConstantMapsCorrelateWithNothing) {
    const std::vector<float> truth = {0, 0, 1};
    const std::vector<float> found = {4, 4, 4};
    const std::vector<unsigned char> mask = {1, 1, 1};
    EXPECT_EQ(recover(truth, found, mask)[0].component, -1);
}

} // namespace
} // namespace zn::test
