#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica run`
void addRunCommand(CLI::App& app, Action& action);

} // namespace zn::headless
