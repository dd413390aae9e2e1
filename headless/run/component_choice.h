#pragma once

#include "headless/dimension/component_estimate.h"
#include "headless/host/session.h"
#include "headless/run/run_mask.h"
#include "headless/run/run_options.h"

#include <string>

namespace zn::headless {

/// Estimates the number of components for --components auto and settles it in the options and the session.
ComponentEstimate settleComponents(const RunMask& mask, RunOptions& options, Session& session);

/// Each criterion's answer in a sentence.
std::string estimateNote(const ComponentEstimate& estimate);

} // namespace zn::headless
