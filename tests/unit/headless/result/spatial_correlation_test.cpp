#include "headless/result/spatial_correlation.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

constexpr double kRounding = 1e-15;

TEST(StandardisedMaps, HaveMeanZeroAndLengthOneOverTheChosenVoxels) {
    // Voxels 0, 2 and 3 hold 1, 4 and 7: deviations -3, 0 and 3, of length sqrt(18).
    EXPECT_THAT(
        standardisedMaps(std::vector<float>{1, 99, 4, 7}, 4, {0, 2, 3}),
        ElementsAre(DoubleNear(-0.70710678118654752, kRounding), 0.0, DoubleNear(0.70710678118654752, kRounding)));
}

TEST(StandardisedMaps, AreZerosForAMapThatIsConstantOrNotFinite) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    EXPECT_THAT(standardisedMaps(std::vector<float>{2, 2, 1, kNaN, kInfinity, 0}, 2, {0, 1}), testing::Each(0.0));
}

} // namespace
} // namespace zn::test
