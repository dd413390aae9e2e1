#pragma once

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// The group of options that a command's --help leaves out, so that it fits on a screen; --help-all lists them too.
inline constexpr char kRareOptions[] = "rare";

/// Lays out the help of a command compactly: description, usage, one line per option if possible, examples. At most 80
/// columns wide.
std::shared_ptr<CLI::FormatterBase> compactHelp();

/// The bash completion script: subcommands, their options, otherwise file names.
std::string bashCompletion(const CLI::App& app);

} // namespace zn::headless
