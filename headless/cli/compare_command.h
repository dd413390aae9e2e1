#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica compare A B`: prints the pairs of components of two results; with --out writes the same table there, too.
void addCompareCommand(CLI::App& app, Action& action);

} // namespace zn::headless
