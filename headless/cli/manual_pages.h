#pragma once

#include <map>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// The manual pages (section 1, roff) of a program and of each of its commands, made from their help texts, by file
/// name: "znica.1", "znica-run.1".
std::map<std::string, std::string> manualPages(const CLI::App& app, const std::string& version);

} // namespace zn::headless
