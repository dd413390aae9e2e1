#pragma once

#include "headless/run/run_options.h"

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Adds the options of `znica run` that say what is done to the time courses before the analysis.
///
///   o   outlives the command
void addPreparationOptions(CLI::App& run, PreparationOptions& o);

} // namespace zn::headless
