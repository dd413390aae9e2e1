#include "headless/design/region_names.h"

#include "headless/design/text_lines.h"
#include "headless/failure/failure.h"

#include <algorithm>

namespace zn {

namespace {

std::size_t columnOf(const std::string& name, const std::vector<std::string_view>& header, const std::string& file) {
    const auto found = std::find(header.begin(), header.end(), name);
    if (found != header.end()) return static_cast<std::size_t>(found - header.begin());
    throw Failure(ExitStatus::kInput,
                  file + " has no column \"" + name + "\"; its first line must name the columns index and name.");
}

} // namespace

std::map<std::int32_t, std::string> readRegionNames(const std::filesystem::path& file) {
    const auto lines = readLines(file);
    const auto header = splitAtTabs(lines.front());
    const std::size_t index = columnOf("index", header, file.string());
    const std::size_t name = columnOf("name", header, file.string());

    std::map<std::int32_t, std::string> names;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        if (splitAtBlanks(lines[line]).empty()) continue;
        const std::string where = file.string() + ", line " + std::to_string(line + 1) + ",";
        const auto cells = splitAtTabs(lines[line]);
        if (cells.size() != header.size()) {
            throw Failure(ExitStatus::kInput, where + " has " + std::to_string(cells.size()) + " cells, its header " +
                                                  std::to_string(header.size()) + "; separate them by tabs.");
        }
        const float label = numberIn(cells[index], where);
        names[static_cast<std::int32_t>(label)] = std::string(cells[name]);
    }
    return names;
}

} // namespace zn
