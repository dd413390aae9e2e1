#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

/// `znica score`: prints, for every source of a simulated sample, the component of a result whose map is most like it
/// and the absolute spatial correlation of the two.
void addScoreCommand(CLI::App& app, Action& action);

} // namespace zn::headless
