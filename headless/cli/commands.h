#pragma once

#include "headless/cli/command_line.h"

namespace zn::headless {

// Every command adds its options, help and examples, and sets the action if it is the one given.

/// All commands of the program, in the order of the help. The page that runs in a browser has its own, with fewer.
void addCommands(CLI::App& app, Action& action);

/// `znica run`
void addRunCommand(CLI::App& app, Action& action);

/// `znica bids BIDS_DIR OUT_DIR participant|group`: the command line of a BIDS App.
void addBidsCommand(CLI::App& app, Action& action);

/// `znica simulate`: creates a sample with known sources in a new folder.
void addSimulateCommand(CLI::App& app, Action& action);

/// `znica score`: prints, for every source of a simulated sample, the component of a result whose map is most similar
/// and the absolute spatial correlation of the two.
void addScoreCommand(CLI::App& app, Action& action);

/// `znica info`: prints what the plug-in says about itself and which host functions it looks up: those that work here,
/// those that only report that this host lacks them, and those that do not exist.
void addInfoCommand(CLI::App& app, Action& action);

/// `znica compare A B`: prints the matched components of two results and a summary; with --out also writes the table,
/// without the summary, to a file.
void addCompareCommand(CLI::App& app, Action& action);

/// `znica denoise`: removes rejected components from an image, with the evidence.
void addDenoiseCommand(CLI::App& app, Action& action);

/// `znica report DIR`: recreates the report of a result.
void addReportCommand(CLI::App& app, Action& action);

/// `znica group`: the steps of a group analysis.
void addGroupCommand(CLI::App& app, Action& action);

/// How to create and score a sample; shared by `simulate` and `score`.
extern const char kSimulateExamples[];

} // namespace zn::headless
