#include "headless/report/mean_image.h"

#include <gmock/gmock.h>

#include <cmath>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

TEST(GreyLevels, RiseFromZeroToTheBrightTissue) {
    std::vector<float> mean(1000, 200.0f);
    mean[0] = 100.0f;
    mean[1] = 0.0f;
    mean[2] = -5.0f;
    mean[3] = 5000.0f; // a single bright voxel does not darken the rest
    const auto levels = greyLevels(mean);
    EXPECT_EQ(levels[0], 128); // half of 255, rounded
    EXPECT_EQ(levels[1], 0);
    EXPECT_EQ(levels[2], 0);
    EXPECT_EQ(levels[3], 255);
    EXPECT_EQ(levels[4], 255);
}

TEST(GreyLevels, AreBlackForNonFiniteValues) {
    EXPECT_THAT(greyLevels({std::nanf(""), 0.0f, INFINITY}), ElementsAre(0, 0, 0));
}

} // namespace
} // namespace zn::test
