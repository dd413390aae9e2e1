#include "headless/report/map_blocks.h"

#include "headless/report/packed_map.h"
#include "headless/report/report_page.h"

#include <cmath>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using Mask = std::vector<unsigned char>;

TEST(MapBlocks, HoldTheValuesInsideTheMask) {
    const std::vector<float> map = {9.0f, 1.25f, NAN, -0.5f, 7.0f};
    const MapBlock block = mapBlock(map, {0, 1, 1, 1, 0}, 3);
    EXPECT_EQ(block.decimals, 3);
    EXPECT_EQ(block.lowest, -0.5);
    EXPECT_EQ(block.highest, 1.25);
    EXPECT_EQ(block.packed, packedText(packMap(std::vector<float>{1.25f, NAN, -0.5f}, 3).bytes));
}

TEST(MapBlocks, HaveFewerDecimalsWhenTheyAreMany) {
    EXPECT_EQ(mapDigits(100'000, 20), 3);
    EXPECT_EQ(mapDigits(100'001, 20), 2);
}

TEST(MapBlocks, AreTheSameForAnyNumberOfThreads) {
    std::vector<std::vector<float>> values(7, std::vector<float>(500));
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t v = 0; v < values[i].size(); ++v) values[i][v] = std::sin(static_cast<float>(v * (i + 1)));
    }
    const std::vector<std::span<const float>> maps(values.begin(), values.end());
    const Mask mask(500, 1);
    WorkerThreads one(1);
    WorkerThreads three(3);
    const auto expected = mapBlocks(maps, mask, one);
    const auto blocks = mapBlocks(maps, mask, three);
    ASSERT_EQ(blocks.size(), maps.size());
    for (std::size_t i = 0; i < maps.size(); ++i) {
        EXPECT_EQ(blocks[i].packed, mapBlock(maps[i], mask, 3).packed) << i;
        EXPECT_EQ(blocks[i].packed, expected[i].packed) << i;
        EXPECT_EQ(blocks[i].lowest, expected[i].lowest) << i;
    }
}

} // namespace
} // namespace zn::test
