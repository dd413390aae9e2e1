#pragma once

#include "headless/run/run_options.h"

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Adds the options for what is read and analysed: mask, dummy scans, TR, components, memory. Returns --components,
/// which other options may exclude.
CLI::Option* addInputOptions(CLI::App& run, RunOptions& options);

} // namespace zn::headless
