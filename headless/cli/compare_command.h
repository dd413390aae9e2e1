#pragma once

#include "headless/failure/failure.h"

#include <filesystem>

namespace zn::headless {

/// `znica compare`: what is compared, and where the table goes.
struct CompareOptions {
    std::filesystem::path a;   ///< folder of a result
    std::filesystem::path b;   ///< folder of another one on the same grid
    std::filesystem::path out; ///< empty: the table is only printed
    bool force = false;        ///< replace `out`
};

/// Pairs the components of two results so that the sum of the absolute spatial correlations is largest, and prints the
/// pairs as a table, best first; the correlations run over the voxels that both results analysed:
///
///   a       b       r
///   ICA_00  ICA_02  -0.9991
///
/// A component without a partner has n/a. The sign tells whether the maps are each other's negative. With `out` the
/// same table is written there, tab-separated. Throws Failure (kInput) for folders without maps or on other grids,
/// (kOther) when the table exists or cannot be written.
ExitStatus compareCommand(const CompareOptions& options);

} // namespace zn::headless
