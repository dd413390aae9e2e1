#include "headless/design/region_names.h"

#include "headless/failure/failure.h"
#include "headless/text/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace zn::headless {

namespace {

std::size_t columnOf(const std::string& name, const std::vector<std::string_view>& header, const std::string& file) {
    const auto found = std::find(header.begin(), header.end(), name);
    if (found != header.end()) return static_cast<std::size_t>(found - header.begin());
    throw Failure(ExitStatus::kInput,
                  file + " has no column \"" + name + "\"; its first line must name the columns index and name.");
}

std::int32_t labelIn(std::string_view cell, const std::string& where) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    const bool whole = error == std::errc() && end == cell.data() + cell.size() && number == std::trunc(number) &&
                       std::fabs(number) <= std::numeric_limits<std::int32_t>::max();
    if (whole) return static_cast<std::int32_t>(number);
    throw Failure(ExitStatus::kInput,
                  where + " holds \"" + std::string(cell) + "\" where a label (a whole number) is expected.");
}

} // namespace

std::map<std::int32_t, std::string> readRegionNames(const std::filesystem::path& file) {
    const auto lines = readLines(file);
    const auto header = splitAtTabs(lines.front());
    const std::size_t index = columnOf("index", header, file.string());
    const std::size_t name = columnOf("name", header, file.string());

    std::map<std::int32_t, std::string> names;
    std::map<std::int32_t, std::size_t> lineOf;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        if (splitAtBlanks(lines[line]).empty()) continue;
        const std::string where = file.string() + ", line " + std::to_string(line + 1) + ",";
        const auto cells = splitAtTabs(lines[line]);
        if (cells.size() != header.size()) {
            throw Failure(ExitStatus::kInput, where + " has " + std::to_string(cells.size()) +
                                                  " cells, but the header has " + std::to_string(header.size()) +
                                                  "; separate cells by tabs.");
        }
        const std::int32_t label = labelIn(cells[index], where);
        const auto [first, isNew] = lineOf.emplace(label, line + 1);
        if (!isNew) {
            throw Failure(ExitStatus::kInput, where + " names the label " + std::to_string(label) +
                                                  " again, after line " + std::to_string(first->second) +
                                                  "; keep only one of the two.");
        }
        if (!splitAtBlanks(cells[name]).empty()) names[label] = std::string(cells[name]);
    }
    return names;
}

} // namespace zn::headless
