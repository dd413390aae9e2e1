#pragma once

#include "headless/failure/failure.h"
#include "headless/result/unfinished_work.h"
#include "headless/run/run_options.h"

#include <cstdint>

namespace zn::headless {

/// `znica run`: reads the input, runs the plug-in on it, writes the result into its folder. Returns kDone or kGaveUp;
/// throws Failure, in which case the result's folder is as it was.
ExitStatus runAnalysis(const RunOptions& options, UnfinishedWork& unfinished);

/// What is known about a run before its data are read.
struct RunForecast {
    double secondsPerVolume = 0.0;
    int volumes = 0; ///< analysed
    std::int64_t peakBytes = 0;
};

/// Reads the headers, the mask or the first volume, and the tables, and prints nothing. Throws Failure (kInput) where
/// the run would.
RunForecast forecastRun(const RunOptions& options);

} // namespace zn::headless
