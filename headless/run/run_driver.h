#pragma once

#include "headless/failure/failure.h"
#include "headless/result/unfinished_work.h"
#include "headless/run/run_options.h"

namespace zn::headless {

/// `znica run`: reads the input, runs the plug-in on it, writes the result into its folder. Returns kDone or kGaveUp;
/// throws Failure, in which case the result's folder is as it was.
ExitStatus runAnalysis(const RunOptions& options, UnfinishedWork& unfinished);

} // namespace zn::headless
