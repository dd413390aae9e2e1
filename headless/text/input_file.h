#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// Throws Failure (kInput): the file's name, a blank, and why it cannot be used, a sentence's end.
[[noreturn]] void refuseFile(const std::filesystem::path& file, const std::string& why);

/// Throws Failure (kInput) unless the file is there, is no folder and may be read.
void requireReadable(const std::filesystem::path& file);

/// All bytes of a file. Throws Failure (kInput) when they cannot be read.
std::string readWholeFile(const std::filesystem::path& file);

} // namespace zn::headless
