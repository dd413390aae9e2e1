#pragma once

#include "headless/run/run_options.h"

#include <CLI/CLI.hpp>

namespace zn::headless {

// The options of `znica run` that other commands have, too.

/// What is analysed and how: everything but the image, the output and its replacement.
void addAnalysisOptions(CLI::App& run, RunOptions& options);

/// Seed, threads, repeats, what is printed and written.
void addControlOptions(CLI::App& command, RunControl& control);

} // namespace zn::headless
