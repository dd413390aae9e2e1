#include "headless/report/packed_map.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

// Accumulates the differences of the two byte planes, as the page does.
std::vector<int> numbersIn(const PackedMap& map) {
    const std::size_t count = map.bytes.size() / 2;
    std::vector<int> numbers;
    std::uint32_t sum = 0;
    for (std::size_t v = 0; v < count; ++v) {
        sum +=
            std::to_integer<std::uint32_t>(map.bytes[v]) + 256 * std::to_integer<std::uint32_t>(map.bytes[count + v]);
        sum %= 65536;
        numbers.push_back(sum < 32768 ? static_cast<int>(sum) : static_cast<int>(sum) - 65536);
    }
    return numbers;
}

TEST(PackedMap, RoundsEveryValueOnceToTheRequestedDecimals) {
    const PackedMap map = packMap(std::vector<float>{1.2346f, -1.2344f, 0.0004f, 4.0f}, 3);
    EXPECT_EQ(map.decimals, 3);
    EXPECT_THAT(numbersIn(map), ElementsAre(1235, -1234, 0, 4000));
}

TEST(PackedMap, KeepsLargeValuesWithFewerDecimals) {
    const PackedMap map = packMap(std::vector<float>{40.0f, -1.234f}, 3); // 40000 does not fit into 16 bits
    EXPECT_EQ(map.decimals, 2);
    EXPECT_THAT(numbersIn(map), ElementsAre(4000, -123));
}

TEST(PackedMap, KeepsSmallValuesWithAsManyDigits) {
    const PackedMap map = packMap(std::vector<float>{0.00123456f, -0.0005f}, 2);
    EXPECT_EQ(map.decimals, 5);
    EXPECT_THAT(numbersIn(map), ElementsAre(123, -50));
}

TEST(PackedMap, KeepsTheWidestRangeExactly) {
    const PackedMap map = packMap(std::vector<float>{32.767f, -32.767f, 32.767f}, 3);
    EXPECT_THAT(numbersIn(map), ElementsAre(32767, -32767, 32767));
}

TEST(PackedMap, MarksNonFiniteValues) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float endless = std::numeric_limits<float>::infinity();
    const PackedMap map = packMap(std::vector<float>{none, 1.0f, -endless}, 2);
    EXPECT_THAT(numbersIn(map), ElementsAre(-32768, 100, -32768));
    EXPECT_EQ(map.lowest, 1.0);
    EXPECT_EQ(map.highest, 1.0);
}

TEST(PackedMap, ReportsTheRangeBeforeRounding) {
    const PackedMap map = packMap(std::vector<float>{-2.5f, 7.0078125f}, 2);
    EXPECT_EQ(map.lowest, -2.5);
    EXPECT_EQ(map.highest, 7.0078125);
}

TEST(PackedMap, SaysWhetherTheLongerTailIsNegative) {
    EXPECT_TRUE(packMap(std::vector<float>{-4.0f, 1.0f, 1.0f, 2.0f}, 2).negativeTail);
    EXPECT_FALSE(packMap(std::vector<float>{4.0f, -1.0f, -1.0f, -2.0f}, 2).negativeTail);
    EXPECT_FALSE(packMap(std::vector<float>{-4.0f, -4.0f, -4.0f, 3.0f}, 2).negativeTail); // about the mean, not about 0
    EXPECT_FALSE(packMap(std::vector<float>{std::nanf("")}, 2).negativeTail);
}

TEST(PackedMap, AcceptsAMapWithoutFiniteValues) {
    const PackedMap map = packMap(std::vector<float>{std::nanf("")}, 2);
    EXPECT_THAT(numbersIn(map), ElementsAre(-32768));
    EXPECT_EQ(map.highest, 0.0);
}

} // namespace
} // namespace zn::test
