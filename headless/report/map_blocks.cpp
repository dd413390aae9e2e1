#include "headless/report/map_blocks.h"

#include "headless/report/packed_map.h"
#include "headless/report/report_page.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr std::int64_t kManyValues = 2'000'000; // beyond this, a third decimal would only make the page larger

} // namespace

int mapDigits(std::int64_t voxelsInside, int maps) {
    return voxelsInside * maps > kManyValues ? 2 : 3;
}

MapBlock mapBlock(std::span<const float> inside, int digits) {
    const PackedMap packed = packMap(inside, digits);
    return {packed.decimals, packed.lowest, packed.highest, packed.negativeTail, packedText(packed.bytes)};
}

MapBlock mapBlock(std::span<const float> map, const std::vector<unsigned char>& mask, int digits) {
    std::vector<float> inside;
    inside.reserve(map.size());
    for (std::size_t v = 0; v < map.size(); ++v) {
        if (mask[v] != 0) inside.push_back(map[v]);
    }
    return mapBlock(inside, digits);
}

std::vector<MapBlock> mapBlocks(const std::vector<std::span<const float>>& maps, const std::vector<unsigned char>& mask,
                                WorkerThreads& threads) {
    const auto count = static_cast<int>(maps.size());
    const int digits = mapDigits(std::count(mask.begin(), mask.end(), 1), count);
    std::vector<MapBlock> blocks(maps.size());
    threads.run(count, [&](int i) {
        const auto number = static_cast<std::size_t>(i);
        blocks[number] = mapBlock(maps[number], mask, digits);
    });
    return blocks;
}

} // namespace zn::headless
