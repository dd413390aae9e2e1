#pragma once

#include "headless/blas/worker_threads.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace zn::headless {

/// A component map as the page holds it.
struct MapBlock {
    int decimals = 0; ///< these four as in PackedMap
    double lowest = 0;
    double highest = 0;
    bool negativeTail = false;
    std::string packed; ///< the text of its script element, see packedText()
};

/// The decimals of a page's maps around 1; see packMap().
int mapDigits(std::int64_t voxelsInside, int maps);

/// Packs the values of a map, all of them inside the mask.
MapBlock mapBlock(std::span<const float> inside, int digits);

/// The same for a map of the whole grid.
MapBlock mapBlock(std::span<const float> map, const std::vector<unsigned char>& mask, int digits);

/// The blocks of all maps, on several threads; the same for any number of them. Throws std::bad_alloc.
std::vector<MapBlock> mapBlocks(const std::vector<std::span<const float>>& maps, const std::vector<unsigned char>& mask,
                                WorkerThreads& threads);

} // namespace zn::headless
