#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// The lines of a text file without their ends (LF or CR LF) and without a byte-order mark. Throws Failure (kInput)
/// when the file is missing, unreadable, empty or no text (it holds a zero byte).
std::vector<std::string> readLines(const std::filesystem::path& file);

/// The cells of a line between tabs; an empty line has one empty cell.
std::vector<std::string_view> splitAtTabs(std::string_view line);

/// The words of a line between blanks and tabs.
std::vector<std::string_view> splitAtBlanks(std::string_view line);

/// The number that the whole of a text spells, independent of the locale. Throws Failure (kInput) beginning with
/// `where` when it spells none or one that is not finite.
float numberIn(std::string_view text, const std::string& where);

} // namespace zn::headless
