#pragma once

#include <set>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// The options of a command that were given, as arguments for another command with the same options.
///
///   options   which of them, in this order
std::vector<std::string> forwardedOptions(const std::vector<const CLI::Option*>& options);

} // namespace zn::headless
