#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// What a command tells its users about: the options and commands that are not hidden (those have no group), in the
/// order in which they were added.
std::vector<const CLI::Option*> shownOptions(const CLI::App& app);
std::vector<const CLI::App*> shownCommands(const CLI::App& app);

/// "znica", "znica run"
std::string fullName(const CLI::App& app);

/// An option with the name of its value: "--tr SECONDS", "--help", "BOLD".
std::string synopsis(const CLI::Option& option);

/// What must be typed: "znica run BOLD --out DIR [option...]", "znica COMMAND [option...]".
std::string usage(const CLI::App& app);

} // namespace zn::headless
