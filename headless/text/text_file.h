#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zn::headless {

/// Writes a whole text file. Throws Failure (kOther) when not all of it reached the disk.
void writeTextFile(const std::filesystem::path& file, std::string_view text);

/// The shortest text that reads back as the same number; "n/a" for not-a-number, as BIDS tables have it.
std::string cellText(float value);

} // namespace zn::headless
