#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace zn::headless {

/// How well one true source was found.
struct Recovery {
    int component = -1;       ///< the component with the most similar map; -1: no correlation is defined
    double correlation = 0.0; ///< absolute Pearson correlation of the two maps over the mask
};

/// For every true map, the component map with the largest absolute correlation.
///
///   truth, found   [map][voxel], map after map
///   mask           one byte per voxel; correlations run over the nonzero ones
///
/// Maps that are constant or hold non-finite values correlate with nothing.
std::vector<Recovery> recover(std::span<const float> truth, std::span<const float> found,
                              std::span<const unsigned char> mask);

/// How well a result recovers one source of a sample.
struct SourceScore {
    std::string name;
    Recovery recovery;
};

/// For every source of a simulated sample, the component of a result whose map is most similar to it. Throws Failure
/// (kInput) when one of the folders lacks its files or the two do not match.
std::vector<SourceScore> scoreResult(const std::filesystem::path& result, const std::filesystem::path& truth);

} // namespace zn::headless
