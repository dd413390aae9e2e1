#include "headless/mask/brain_mask.h"

#include "headless/mask/intensity_threshold.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

TEST(IntensityThreshold, IsHalfTheMedianOfTheHeadForAnyAmountOfAir) {
    for (const std::size_t air : {0U, 100U, 1900U}) {
        std::vector<float> image(air, 12.0f);
        for (int i = 0; i < 101; ++i) image.push_back(950.0f + static_cast<float>(i)); // median 1000
        EXPECT_EQ(intensityThreshold(image), 500.0f) << air;
    }
}

TEST(IntensityThreshold, IgnoresZerosAndNonFiniteValues) {
    std::vector<float> image(1000, 0.0f);
    image.insert(image.end(), {100.0f, 100.0f, 100.0f, NAN, std::numeric_limits<float>::infinity()});
    EXPECT_EQ(intensityThreshold(image), 50.0f);
}

TEST(IntensityThreshold, DoesNotExistForDeviationsFromZero) {
    EXPECT_FALSE(intensityThreshold({-2, -1, 1, 2}));
    EXPECT_FALSE(intensityThreshold({0, 0}));
    EXPECT_FALSE(intensityThreshold({}));
}

TEST(KeepLargestComponent, CornersDoNotConnect) {
    // 1 1 0 1 0 0 1 1   the two on the upper left touch the three on the right only at a corner
    std::vector<unsigned char> mask = {1, 1, 0, 1, 0, 0, 1, 1};
    keepLargestComponent(mask, {4, 2, 1});
    EXPECT_THAT(mask, ElementsAre(0, 0, 0, 1, 0, 0, 1, 1));
}

TEST(FillHoles, FillsWhatIsNotFaceConnectedToTheBorder) {
    std::vector<unsigned char> box(27, 1);
    box[13] = 0; // the centre of 3 x 3 x 3
    fillHoles(box, {3, 3, 3});
    EXPECT_THAT(box, testing::Each(1));
    box[13] = box[4] = 0; // a way out through the face
    fillHoles(box, {3, 3, 3});
    EXPECT_EQ(box[13], 0);
    EXPECT_EQ(box[4], 0);
}

} // namespace
} // namespace zn::test
