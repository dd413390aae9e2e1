#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica info`: prints what the plug-in says about itself and which host functions it looks up: those that work here,
/// those that this host lacks, and those that do not exist in it.
void addInfoCommand(CLI::App& app, Action& action);

} // namespace zn::headless
