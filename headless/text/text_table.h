#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zn::headless {

/// A table with named columns, as spreadsheets and BIDS write them.
struct TextTable {
    std::string file;                           ///< for messages
    std::vector<std::string> columns;           ///< the cells of the first line, without blanks around them
    std::vector<std::vector<std::string>> rows; ///< [row][column]
    std::vector<std::size_t> lines;             ///< [row]: line in the file, counted from 1

    /// Position of a column; nothing when there is none of this name.
    std::optional<std::size_t> find(std::string_view column) const;

    /// "x.tsv, line 3, column "rest"," for messages on a cell.
    std::string place(std::size_t row, std::size_t column) const;

    /// A finite number. Throws Failure (kInput).
    double number(std::size_t row, std::size_t column) const;
};

/// Parses a table whose cells are separated by tabs, if its first line has any, else by commas. In the latter case a
/// cell may be enclosed in double quotes, with quotes inside it doubled. Empty lines are skipped. Throws Failure
/// (kInput) for a row with more or fewer cells than the header; its text names `file`.
TextTable parseTable(const std::vector<std::string>& lines, const std::string& file);

/// "n/a", or nothing at all: how BIDS tables and spreadsheets write a missing value.
bool isMissing(std::string_view cell);

} // namespace zn::headless
