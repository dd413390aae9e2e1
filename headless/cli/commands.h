#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

// Every command adds its options, its help and its examples, and sets the action when it is the one that was given.

/// `znica run`
void addRunCommand(CLI::App& app, Action& action);

/// `znica simulate`: makes a sample with known sources in a new folder.
void addSimulateCommand(CLI::App& app, Action& action);

/// `znica score`: prints, for every source of a simulated sample, the component of a result whose map is most like it
/// and the absolute spatial correlation of the two.
void addScoreCommand(CLI::App& app, Action& action);

/// `znica info`: prints what the plug-in says about itself and which host functions it looks up: those that work here,
/// those that this host lacks, and those that do not exist in it.
void addInfoCommand(CLI::App& app, Action& action);

/// `znica compare A B`: prints the pairs of components of two results; with --out writes the same table there, too.
void addCompareCommand(CLI::App& app, Action& action);

/// `znica report DIR`: makes the page of a result again.
void addReportCommand(CLI::App& app, Action& action);

/// How a sample is made and scored; `simulate` and `score` share it.
extern const char kSimulateExamples[];

} // namespace zn::headless
