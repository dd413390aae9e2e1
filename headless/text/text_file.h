#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zn::headless {

/// Writes a text file. Throws Failure (kOther) when it cannot be written completely.
void writeTextFile(const std::filesystem::path& file, std::string_view text);

/// The same for a file that may exist: the text is written under a new hidden name beside it, which then takes its
/// place. The earlier file stays until then, several processes do not disturb each other, and a link is replaced, not
/// followed. Hidden files that killed processes left in that folder are removed.
void replaceTextFile(const std::filesystem::path& file, std::string_view text);

/// The same for a file that must not exist, not even since the last look. False when it does.
bool createTextFile(const std::filesystem::path& file, std::string_view text);

/// The shortest text that reads back as the same number; "n/a" for NaN, as in BIDS tables.
std::string cellText(float value);

/// A name as a cell of a table: control characters, tabs and line ends above all, become blanks.
std::string cellText(std::string name);

} // namespace zn::headless
