#pragma once

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

namespace zn::headless {

/// An option for the number of a group's components: from 2 to 1000, or auto, which is nothing.
void addGroupComponents(CLI::App& command, const std::string& name, const std::string& about,
                        std::optional<int>& components);

} // namespace zn::headless
