#pragma once

#include <filesystem>
#include <string>

namespace zn::headless {

/// Throws Failure (kInput) with the text "FILE WHY": `why` completes a sentence that begins with the file's name.
[[noreturn]] void refuseFile(const std::filesystem::path& file, const std::string& why);

/// Throws Failure (kInput) unless the file exists, is not a folder and is readable.
void requireReadable(const std::filesystem::path& file);

/// All bytes of a file. Throws Failure (kInput) when they cannot be read.
std::string readWholeFile(const std::filesystem::path& file);

} // namespace zn::headless
