#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
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

/// The method of that name; nothing when there is none.
inline std::optional<DenoiseMethod> denoiseMethodNamed(std::string_view name) {
    for (const DenoiseMethod method :
         {DenoiseMethod::kNonAggressive, DenoiseMethod::kAggressive, DenoiseMethod::kOrthogonalised}) {
        if (name == nameOf(method)) return method;
    }
    return std::nullopt;
}

/// The options of `znica denoise`. Exactly one of `labels` and `rejected` is given.
struct DenoiseOptions {
    std::filesystem::path result;     ///< folder created by znica run, or one of znica bids with the image's run
    std::filesystem::path functional; ///< 4D image: that of the run, or another version of it on the same grid
    std::filesystem::path out;
    std::filesystem::path labels;      ///< table exported by the report; empty: none
    std::vector<std::string> rejected; ///< "3" (IC 3 of the report, counted from 1) or "ICA_02"
    DenoiseMethod method = DenoiseMethod::kNonAggressive;
    std::filesystem::path confounds;          ///< empty: none
    std::vector<std::string> confoundColumns; ///< empty: all; only "none": none
    double highPassSeconds = 0.0;             ///< cut-off period; 0: none
    std::optional<int> threads;               ///< nothing: those of the BLAS, at most the job's
    bool force = false;
    bool quiet = false;
    bool report = true; ///< write report.html
};

} // namespace zn::headless
