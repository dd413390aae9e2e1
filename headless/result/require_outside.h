#pragma once

#include <filesystem>
#include <vector>

namespace zn::headless {

/// Throws Failure (kInput) when an input of a command lies in the folder that --force would replace, or is that folder;
/// for a link both its own place and its target count. Empty paths are ignored.
void requireOutside(const std::filesystem::path& folder, const std::vector<std::filesystem::path>& inputs);

} // namespace zn::headless
