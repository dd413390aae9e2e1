#pragma once

#include "headless/run/run_options.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// A run as the user lists it.
struct ListedRun {
    std::string name; ///< what its files are named after; unique
    std::filesystem::path image;
    std::filesystem::path mask;    ///< empty: from --mask, or computed from the mean image
    std::filesystem::path results; ///< folder of its courses and maps; empty: "dualreg" in the study's folder
};

/// Some of the runs: part `number` of `of`, counted from 1.
struct Batch {
    int number = 1;
    int of = 1;
};

/// The options of `znica group`. Every step reads those that concern it.
struct GroupOptions {
    std::filesystem::path folder; ///< of the study

    // plan
    std::vector<ListedRun> runs;
    std::filesystem::path mask; ///< of the runs without one; empty: computed from the mean image
    std::optional<double> secondsPerVolume;
    int dummyScans = 0;
    PreparationOptions preparation{.highPassSeconds = 128.0, .scaling = Scaling::kPercent};

    // reduce
    Batch batch;

    // ica
    std::optional<int> components = 20;            ///< nothing: the median of the runs' estimates
    const char* componentsOption = "--components"; ///< what the user calls it
    int repeats = 10;
    int starts = 3;
    int maxIterations = 500;
    std::uint32_t seed = 1;
    std::filesystem::path plugin; ///< empty: the one that belongs to the command

    // back
    std::vector<std::string> only; ///< names of runs; empty: all

    std::optional<int> threads; ///< nothing: those of the BLAS, at most the job's
    bool force = false;         ///< repeat a step that has been done
    bool quiet = false;
};

} // namespace zn::headless
