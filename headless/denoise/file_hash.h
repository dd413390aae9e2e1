#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// The SHA-256 of a file's bytes in 64 hexadecimal digits. Throws Failure (kInput) when it cannot be read.
std::string fileHash(const std::filesystem::path& file);

} // namespace zn::headless
