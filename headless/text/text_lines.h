#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// The lines of a text file without their ends (LF or CR LF) and without a byte-order mark. Throws Failure (kInput)
/// when the file is missing, unreadable, empty or not a text file (it contains a zero byte).
std::vector<std::string> readLines(const std::filesystem::path& file);

/// The tab-separated cells of a line; an empty line has one empty cell.
std::vector<std::string_view> splitAtTabs(std::string_view line);

/// The words of a line, separated by blanks and tabs.
std::vector<std::string_view> splitAtBlanks(std::string_view line);

/// Parses an entire text as a number, independently of the locale. Throws Failure (kInput), its text beginning with
/// `where`, unless it is a finite number.
double doubleIn(std::string_view text, const std::string& where);

/// The same, rounded to single precision.
float numberIn(std::string_view text, const std::string& where);

} // namespace zn::headless
