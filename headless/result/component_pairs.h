#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// A component of one result and its partner in another one, both counted from 0.
struct ComponentPair {
    int a;    ///< -1: none
    int b;    ///< -1: none
    double r; ///< correlation of the two maps, rounded to four digits; 0 without a partner
};

/// Pairs the components of two results so that the sum of the absolute spatial correlations is largest, best pairs
/// first; the correlations run over the voxels that both results analysed. Throws Failure (kInput) for folders without
/// maps, on other grids or without common voxels.
std::vector<ComponentPair> pairComponents(const std::filesystem::path& a, const std::filesystem::path& b);

/// The pairs as a tab-separated table; a component without a partner has n/a. The sign says whether the maps are each
/// other's negative:
///
///   a       b       r
///   ICA_00  ICA_02  -0.9991
std::string pairTable(const std::vector<ComponentPair>& pairs);

} // namespace zn::headless
