#pragma once

#include "headless/simulate/brain.h"
#include "headless/simulate/random_numbers.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// Where a source is active: one blob, or two that mirror each other left and right, with the weight
/// (1 - (r / radius)^2)^2. Few large and many small weights, on purpose: with sources that are merely on or off, the
/// iteration with the Gaussian nonlinearity often converges to a mixture of two.
struct SourceMap {
    struct Entry {
        std::int64_t voxel;
        float weight;
    };
    std::vector<std::array<double, 3>> centres; ///< voxel coordinates
    double radius = 0.0;                        ///< voxels
    std::vector<Entry> entries;                 ///< voxels inside the brain with a weight above 0

    /// Voxels where the source is strong (weight above 0.25): the region of the source.
    std::vector<Entry> region() const;
};

/// Places `count` sources that overlap only at their edges as long as there is room; every third one has two blobs.
std::vector<SourceMap> placeSources(const Brain& brain, int count, RandomNumbers& random);

} // namespace zn::headless
