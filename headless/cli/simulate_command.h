#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// How a sample is made and scored; `simulate` and `score` share it.
extern const char kSimulateExamples[];

/// `znica simulate`: makes a sample with known sources in a new folder.
void addSimulateCommand(CLI::App& app, Action& action);

} // namespace zn::headless
