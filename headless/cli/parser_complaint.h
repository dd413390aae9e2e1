#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// What the parser complains about, in the words of the commands' own checks: "--repeats: needs 1 to 1000; got 0",
/// "--components is given twice". Its own text where that is clear enough.
///
///   command   the one that was given, or the whole program
std::string parserComplaint(const CLI::ParseError& error, const CLI::App& command);

} // namespace zn::headless
