#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica report DIR`: makes the page of a result again.
void addReportCommand(CLI::App& app, Action& action);

} // namespace zn::headless
