#include "headless/measures/map_moments.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// scipy.stats.skew and scipy.stats.kurtosis of [0, 0, 1, -2, 5].
TEST(MapMoments, AreThoseOfTheVoxelsInTheMask) {
    const std::vector<float> map = {0, 100, 0, 1, -2, -50, 5};
    const MapMoments moments = momentsOf(map, {1, 0, 1, 1, 1, 0, 1});
    EXPECT_NEAR(moments.skewness, 0.8238983939499838, 1e-12);
    EXPECT_NEAR(moments.kurtosis, -0.40020049008687986, 1e-12);
}

TEST(MapMoments, SkewnessChangesItsSignWithTheMap) {
    const std::vector<unsigned char> all(3, 1);
    EXPECT_DOUBLE_EQ(momentsOf(std::vector<float>{0, 0, 3}, all).skewness,
                     -momentsOf(std::vector<float>{0, 0, -3}, all).skewness);
}

TEST(MapMoments, OfAConstantOrNonFiniteMapAreUndefined) {
    for (const float value : {2.0f, NAN}) {
        const MapMoments moments = momentsOf(std::vector<float>{2.0f, value}, {1, 1});
        EXPECT_TRUE(std::isnan(moments.skewness)) << value;
        EXPECT_TRUE(std::isnan(moments.kurtosis)) << value;
    }
}

} // namespace
} // namespace zn::test
