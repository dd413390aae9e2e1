#pragma once

#include <filesystem>

namespace zn::headless {

/// Moves every entry of a folder into another one on the same disk. When one entry cannot be moved, because one of that
/// name exists for example, those already moved go back. The subfolder `except`, if any, stays where it is.
///
/// Throws std::filesystem::filesystem_error.
void moveEntries(const std::filesystem::path& from, const std::filesystem::path& to,
                 const std::filesystem::path& except = {});

} // namespace zn::headless
