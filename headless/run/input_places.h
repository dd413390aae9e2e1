#pragma once

#include "headless/run/run_options.h"

namespace zn::headless {

/// Throws Failure (kInput) when --force would replace a folder that holds a file the run reads: the image, the mask,
/// the design, the regions, their names or the plug-in. Links count where they lie and where they lead.
void requireInputsOutsideResult(const RunOptions& options);

} // namespace zn::headless
