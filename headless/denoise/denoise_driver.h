#pragma once

#include "headless/denoise/denoise_options.h"
#include "headless/denoise/quality.h"
#include "headless/result/unfinished_work.h"

namespace zn::headless {

/// `znica denoise`: removes rejected components from an image and writes the result, with the evidence, into its
/// folder. Returns the quality before and after, as a study's index shows it. Throws Failure, in which case the
/// result's folder is as it was.
Quality denoise(const DenoiseOptions& options, UnfinishedWork& unfinished);

} // namespace zn::headless
