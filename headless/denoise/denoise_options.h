#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// How rejected components are removed; docs/denoising.md has the formulas.
enum class DenoiseMethod {
    kNonAggressive,  ///< only what the fit of all components ascribes to the rejected ones
    kAggressive,     ///< everything that resembles the rejected components
    kOrthogonalised, ///< the same, after the kept components were regressed out of the rejected ones
};

/// "nonaggr", "aggr" or "orthaggr": in options, file names and records.
constexpr const char* nameOf(DenoiseMethod method) {
    return method == DenoiseMethod::kAggressive       ? "aggr"
           : method == DenoiseMethod::kOrthogonalised ? "orthaggr"
                                                      : "nonaggr";
}

/// The options of `znica denoise`. Exactly one of `labels` and `rejected` is given.
struct DenoiseOptions {
    std::filesystem::path result;     ///< folder created by znica run
    std::filesystem::path functional; ///< 4D image: that of the run, or another version of it on the same grid
    std::filesystem::path out;
    std::filesystem::path labels;      ///< table exported by the report; empty: none
    std::vector<std::string> rejected; ///< "3" (IC 3 of the report, counted from 1) or "ICA_02"
    DenoiseMethod method = DenoiseMethod::kNonAggressive;
    std::filesystem::path confounds;          ///< empty: none
    std::vector<std::string> confoundColumns; ///< empty: all; only "none": none
    double highPassSeconds = 0.0;             ///< cut-off period; 0: none
    std::optional<int> threads;               ///< nothing: all processors
    bool force = false;
    bool quiet = false;
    bool report = true; ///< write report.html
};

} // namespace zn::headless
