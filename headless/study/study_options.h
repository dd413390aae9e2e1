#pragma once

#include "headless/run/run_options.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// Preprocessed images of a dataset, such as fMRIPrep's output.
struct Derivatives {
    std::string name; ///< empty: as its folder
    std::filesystem::path folder;
};

/// Which of the images are analysed.
struct Selection {
    std::vector<std::string> participants; ///< labels; empty: all, also below
    std::vector<std::string> sessions;
    std::vector<std::string> tasks;
    std::vector<std::string> runs;
    std::string space; ///< "LABEL" or "LABEL:res-R"; empty: the only one
    std::filesystem::path filterFile;
    std::string only; ///< the name of a single run; empty: all
};

/// Where masks come from, unless --mask says so.
enum class MaskFrom { kDerivativesIfAny, kDerivatives, kAutomatic };

/// Which runs with a record are repeated: those whose settings or input changed and those that another try may repair;
/// besides them all without a result; all.
enum class Rerun { kMissing, kFailed, kAll };

/// The options of `znica bids`.
struct StudyOptions {
    std::filesystem::path dataset;
    std::filesystem::path out;
    std::vector<Derivatives> derivatives;
    Selection selection;
    RunOptions run;                        ///< for every run; the image and the files that belong to it are added
    std::vector<std::string> runArguments; ///< the same as arguments of `znica run`
    bool maskGiven = false;
    MaskFrom maskFrom = MaskFrom::kDerivativesIfAny;
    bool confoundsFromDerivatives = false;
    bool dummyScansFromConfounds = false;
    Rerun rerun = Rerun::kMissing;
    std::optional<int> processors;           ///< nothing: as many as this process may use
    std::optional<std::int64_t> memoryBytes; ///< for all runs together; nothing: what is free
    bool stopOnFirstCrash = false;
};

} // namespace zn::headless
