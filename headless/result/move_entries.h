#pragma once

#include <filesystem>

namespace zn::headless {

/// Moves every entry of a folder into another one on the same disk; what the target names the same is replaced. When
/// one entry cannot be moved, those before it go back. A folder `except` among them stays where it is.
///
/// Throws std::filesystem::filesystem_error.
void moveEntries(const std::filesystem::path& from, const std::filesystem::path& to,
                 const std::filesystem::path& except = {});

} // namespace zn::headless
