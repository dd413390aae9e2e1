#include "headless/nifti/voxel_values.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

nifti_image stored(int type, double slope = 0.0, double inter = 0.0) {
    nifti_image image{};
    image.datatype = type;
    image.scl_slope = slope;
    image.scl_inter = inter;
    return image;
}

template <class Value, std::size_t N>
std::vector<float> converted(const nifti_image& image, const std::array<Value, N>& values) {
    std::vector<float> result(N);
    toFloat(image, reinterpret_cast<const std::byte*>(values.data()), N, result.data());
    return result;
}

TEST(VoxelValues, EveryTypeKeepsItsExtremes) {
    using testing::ElementsAre;
    EXPECT_THAT(converted(stored(2), std::array<std::uint8_t, 2>{0, 255}), ElementsAre(0, 255));
    EXPECT_THAT(converted(stored(256), std::array<std::int8_t, 2>{-128, 127}), ElementsAre(-128, 127));
    EXPECT_THAT(converted(stored(4), std::array<std::int16_t, 2>{-32768, 32767}), ElementsAre(-32768, 32767));
    EXPECT_THAT(converted(stored(512), std::array<std::uint16_t, 1>{65535}), ElementsAre(65535));
    EXPECT_THAT(converted(stored(8), std::array<std::int32_t, 1>{-2147483647 - 1}), ElementsAre(-2147483648.0f));
    EXPECT_THAT(converted(stored(768), std::array<std::uint32_t, 1>{4294967295U}), ElementsAre(4294967296.0f));
    EXPECT_THAT(converted(stored(1024), std::array<std::int64_t, 1>{-(1LL << 62)}), ElementsAre(-0x1p62f));
    EXPECT_THAT(converted(stored(1280), std::array<std::uint64_t, 1>{1ULL << 63}), ElementsAre(0x1p63f));
    EXPECT_THAT(converted(stored(16), std::array<float, 1>{0.1f}), ElementsAre(0.1f));
    EXPECT_THAT(converted(stored(64), std::array<double, 1>{0.1}), ElementsAre(0.1f));
}

TEST(VoxelValues, SlopeAndInterceptAreAppliedInDoublePrecision) {
    // 16777217 needs 25 bits: scaling in single precision would round it to 16777216.
    EXPECT_EQ(converted(stored(8, 2.0, -16777217.0 * 2.0), std::array<std::int32_t, 1>{16777218})[0], 2.0f);
    EXPECT_EQ(converted(stored(4, 0.5, 10.0), std::array<std::int16_t, 1>{-7})[0], 6.5f);
}

TEST(VoxelValues, ASlopeOfZeroOrNaNMeansUnscaled) {
    EXPECT_FALSE(isScaled(stored(4, 0.0, 5.0)));
    EXPECT_FALSE(isScaled(stored(4, std::nan(""), 5.0)));
    EXPECT_FALSE(isScaled(stored(4, 2.0, std::nan(""))));
    EXPECT_FALSE(isScaled(stored(4, 1.0, 0.0)));
    EXPECT_TRUE(isScaled(stored(4, 1.0, 0.5)));
    EXPECT_TRUE(isScaled(stored(4, -1.0, 0.0)));
}

TEST(VoxelValues, NaNAndInfinityPassThrough) {
    const auto values =
        converted(stored(64), std::array<double, 2>{std::nan(""), -std::numeric_limits<double>::infinity()});
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], -std::numeric_limits<float>::infinity());
}

} // namespace
} // namespace zn::test
