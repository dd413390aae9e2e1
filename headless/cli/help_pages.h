#pragma once

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// Lays out the help of a command in few lines: description, usage, one line an option if it suffices, examples.
/// At most 80 columns wide.
std::shared_ptr<CLI::FormatterBase> compactHelp();

/// The manual page (section 1, roff) of a command with all its subcommands, from the texts of their help.
std::string manualPage(const CLI::App& app, const std::string& version);

/// The bash completion of the same: subcommands, their options, else file names.
std::string bashCompletion(const CLI::App& app);

} // namespace zn::headless
