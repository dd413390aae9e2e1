#pragma once

#include <filesystem>

namespace zn::headless {

/// The full path of a folder without a slash at its end, for messages, records and links between datasets. As given
/// where the current folder is unknown.
std::filesystem::path absolutePath(const std::filesystem::path& path);

} // namespace zn::headless
