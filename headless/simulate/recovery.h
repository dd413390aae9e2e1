#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace zn::headless {

/// How well one true source was found.
struct Recovery {
    int component = -1;       ///< the component whose map is most like the source's; -1: none has a correlation
    double correlation = 0.0; ///< absolute Pearson correlation of the two maps over the mask
};

/// For every true map the component map with the largest absolute correlation.
///
///   truth, found   [map][voxel], map after map
///   mask           one byte a voxel; correlations run over those that are not 0
///
/// Maps that are constant or hold values that are not finite correlate with nothing.
std::vector<Recovery> recover(std::span<const float> truth, std::span<const float> found,
                              std::span<const unsigned char> mask);

/// Pearson correlation of two maps over a mask, in double precision; not-a-number when one of them is constant.
double correlationInMask(std::span<const float> a, std::span<const float> b, std::span<const unsigned char> mask);

/// How well one source of a sample came back in a result.
struct SourceScore {
    std::string name;
    Recovery recovery;
};

/// For every source of a simulated sample the component of a result whose map is most like it. Throws Failure (kInput)
/// when one of the folders lacks its files or the two do not fit.
std::vector<SourceScore> scoreResult(const std::filesystem::path& result, const std::filesystem::path& truth);

} // namespace zn::headless
