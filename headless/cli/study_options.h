#pragma once

#include "headless/study/study_options.h"

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Adds the options that say which images of a dataset are analysed.
void addSelectionOptions(CLI::App& command, StudyOptions& options);

/// Adds the options that say how many runs are under way at once, and which are repeated.
void addSchedulingOptions(CLI::App& command, StudyOptions& options);

} // namespace zn::headless
