#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zn::headless {

/// Writes a text file. Throws Failure (kOther) when it cannot be written completely.
void writeTextFile(const std::filesystem::path& file, std::string_view text);

/// The shortest text that reads back as the same number; "n/a" for NaN, as in BIDS tables.
std::string cellText(float value);

} // namespace zn::headless
