#include "headless/text/text_table.h"

#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

#include <algorithm>

namespace zn::headless {

namespace {

std::string trimmed(std::string_view cell) {
    const std::size_t first = cell.find_first_not_of(" \t");
    if (first == std::string_view::npos) return "";
    return std::string(cell.substr(first, cell.find_last_not_of(" \t") - first + 1));
}

// The text from an opening quote to its closing one; what follows up to the next comma is dropped with `line`'s start.
std::string quotedCell(std::string_view& line, const std::string& where) {
    std::string cell;
    line.remove_prefix(1);
    while (true) {
        const std::size_t quote = line.find('"');
        if (quote == std::string_view::npos) {
            throw Failure(ExitStatus::kInput, where + ", has a cell without a closing double quote.");
        }
        cell += line.substr(0, quote);
        line.remove_prefix(quote + 1);
        if (!line.starts_with('"')) break;
        cell += '"';
        line.remove_prefix(1);
    }
    line.remove_prefix(std::min(line.find(','), line.size()));
    return cell;
}

std::vector<std::string> cellsAtCommas(std::string_view line, const std::string& where) {
    std::vector<std::string> cells;
    while (true) {
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        if (line.starts_with('"')) {
            cells.push_back(quotedCell(line, where));
        } else {
            const std::size_t comma = std::min(line.find(','), line.size());
            cells.push_back(trimmed(line.substr(0, comma)));
            line.remove_prefix(comma);
        }
        if (line.empty()) return cells;
        line.remove_prefix(1);
    }
}

std::vector<std::string> cellsAtTabs(std::string_view line) {
    std::vector<std::string> cells;
    for (const std::string_view cell : splitAtTabs(line)) cells.push_back(trimmed(cell));
    return cells;
}

bool isEmpty(const std::string& line) {
    return splitAtBlanks(line).empty();
}

} // namespace

std::optional<std::size_t> TextTable::find(std::string_view column) const {
    const auto found = std::find(columns.begin(), columns.end(), column);
    if (found == columns.end()) return std::nullopt;
    return static_cast<std::size_t>(found - columns.begin());
}

std::string TextTable::place(std::size_t row, std::size_t column) const {
    return file + ", line " + std::to_string(lines[row]) + ", column \"" + columns[column] + "\",";
}

double TextTable::number(std::size_t row, std::size_t column) const {
    return doubleIn(rows[row][column], place(row, column));
}

TextTable parseTable(const std::vector<std::string>& lines, const std::string& file) {
    TextTable table;
    table.file = file;
    const auto header = std::find_if_not(lines.begin(), lines.end(), isEmpty);
    if (header == lines.end()) throw Failure(ExitStatus::kInput, file + " is empty.");
    const bool tabs = header->find('\t') != std::string::npos;
    for (auto line = header; line != lines.end(); ++line) {
        if (isEmpty(*line)) continue;
        const auto number = static_cast<std::size_t>(line - lines.begin()) + 1;
        const std::string where = file + ", line " + std::to_string(number);
        auto cells = tabs ? cellsAtTabs(*line) : cellsAtCommas(*line, where);
        if (line == header) {
            table.columns = std::move(cells);
            continue;
        }
        if (cells.size() != table.columns.size()) {
            throw Failure(ExitStatus::kInput, where + ", has " + std::to_string(cells.size()) +
                                                  " cells, but the header has " + std::to_string(table.columns.size()) +
                                                  "; separate cells by tabs or commas.");
        }
        table.rows.push_back(std::move(cells));
        table.lines.push_back(number);
    }
    return table;
}

bool isMissing(std::string_view cell) {
    return cell.empty() || cell == "n/a";
}

} // namespace zn::headless
