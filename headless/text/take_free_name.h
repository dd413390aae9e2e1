#pragma once

#include <filesystem>
#include <system_error>

namespace zn::headless {

/// Renames a file or folder, but never over another one, not even one that has just appeared. Returns the error;
/// std::errc::file_exists when the name is taken. File systems that cannot do this in one step are asked in two.
std::error_code takeFreeName(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace zn::headless
