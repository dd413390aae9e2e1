#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// A component of one result and its partner in another, both counted from 0.
struct ComponentPair {
    int a;    ///< -1: none
    int b;    ///< -1: none
    double r; ///< correlation of the two maps, rounded to four decimals; 0 without a partner
};

/// Pairs the components of two results so that the sum of the absolute spatial correlations is largest; best pairs
/// first. The correlations run over the voxels analysed in both results. Throws Failure (kInput) for folders without
/// maps, different grids, or no voxels in common.
std::vector<ComponentPair> pairComponents(const std::filesystem::path& a, const std::filesystem::path& b);

/// The pairs as a tab-separated table; a component without a partner is paired with n/a. A negative sign means that one
/// map is inverted:
///
///   a       b       r
///   ICA_00  ICA_02  -0.9991
std::string pairTable(const std::vector<ComponentPair>& pairs);

/// The table in one line, such as "median |r| 0.9312; 12 of 20 pairs above 0.8; 2 components without a partner".
std::string pairSummary(const std::vector<ComponentPair>& pairs);

} // namespace zn::headless
