#pragma once

#include "headless/simulate/brain.h"
#include "headless/simulate/random_numbers.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zn {

/// Where a source is active: one blob, or two that mirror each other left and right. Weights are near 1 inside and
/// fall to 0 softly: maps with hard rims let the Gaussian nonlinearity settle between two sources.
struct SourceMap {
    struct Entry {
        std::int64_t voxel;
        float weight;
    };
    std::vector<std::array<double, 3>> centres; ///< voxel coordinates
    double radius = 0.0;                        ///< voxels
    std::vector<Entry> entries;                 ///< voxels inside the brain with a weight that matters

    /// Voxels where the weight is above one half: the region of the source.
    std::vector<std::int64_t> region() const;
};

/// Places `count` sources that do not touch each other; every third one has two blobs.
std::vector<SourceMap> placeSources(const Brain& brain, int count, RandomNumbers& random);

} // namespace zn
