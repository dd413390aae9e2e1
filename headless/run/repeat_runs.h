#pragma once

#include "headless/host/session.h"
#include "headless/result/stability.h"
#include "headless/run/plugin_library.h"
#include "headless/run/progress.h"
#include "headless/run/run_options.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zn::headless {

/// What came of running the plug-in several times on the same data.
struct RepeatFacts {
    std::vector<std::uint32_t> seeds; ///< [run], the first run's included
    std::vector<int> found;           ///< [run], components found
    std::vector<Stability> stability; ///< [component of the first run]
    int converged = 0;                ///< runs that found all components
    double secondsPlugin = 0.0;       ///< of the runs after the first
};

/// Runs the plug-in again until there are `options.control.repeats` runs, the k-th one (from 0) with the first seed +
/// k, and compares what they found. The session comes with the maps of the first run and goes with them; the later
/// runs' maps are kept in memory for the comparison alone (8 bytes a voxel and component) and their files are removed.
/// Their lines go into `folder`/log.txt. A run that finds nothing counts as not converged; every other failure is
/// thrown.
RepeatFacts repeatRuns(const PluginLibrary& library, Session& session, const RunOptions& options, std::uint32_t seed,
                       const std::filesystem::path& folder, Progress& progress);

} // namespace zn::headless
