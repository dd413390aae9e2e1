#include "headless/denoise/verdicts.h"

#include "headless/failure/failure.h"
#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <set>
#include <string_view>

namespace zn::headless {

namespace {

constexpr std::array<std::string_view, 3> kLabels = {"signal", "noise", "unsure"};

// A cell that the report or a spreadsheet put in quotes, with the quotes inside it doubled.
std::string unquoted(std::string cell) {
    if (cell.size() < 2 || !cell.starts_with('"') || !cell.ends_with('"')) return cell;
    cell = cell.substr(1, cell.size() - 2);
    for (std::size_t at = cell.find("\"\""); at != std::string::npos; at = cell.find("\"\"", at + 1)) cell.erase(at, 1);
    return cell;
}

std::size_t requireColumn(const TextTable& table, const char* name) {
    const auto column = table.find(name);
    if (column) return *column;
    refuseFile(table.file, "has no column \"" + std::string(name) +
                               "\"; --labels takes the table that the report exports, with the columns component, "
                               "classification and note.");
}

std::optional<std::size_t> positionOf(const std::string& name, const std::vector<std::string>& components) {
    const auto found = std::find(components.begin(), components.end(), name);
    if (found == components.end()) return std::nullopt;
    return static_cast<std::size_t>(found - components.begin());
}

std::string rangeOf(const std::vector<std::string>& components) {
    return components.front() + " to " + components.back();
}

std::string labelIn(const std::string& cell, const std::string& place) {
    if (isMissing(cell)) return "";
    if (std::find(kLabels.begin(), kLabels.end(), cell) != kLabels.end()) return cell;
    throw Failure(ExitStatus::kInput,
                  place + " holds the label \"" + cell + "\"; the labels are signal, noise, unsure and n/a.");
}

} // namespace

std::vector<Verdict> readVerdicts(const std::filesystem::path& labels, const std::vector<std::string>& components) {
    const TextTable table = parseTable(readLines(labels), labels.string());
    const std::size_t nameColumn = requireColumn(table, "component");
    const std::size_t labelColumn = requireColumn(table, "classification");
    const auto noteColumn = table.find("note");
    std::vector<Verdict> verdicts(components.size());
    std::set<std::size_t> seen;
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const std::string name = unquoted(table.rows[row][nameColumn]);
        const auto position = positionOf(name, components);
        if (!position) {
            throw Failure(ExitStatus::kInput, table.place(row, nameColumn) + " names " + name +
                                                  ", but the result has " + rangeOf(components) +
                                                  "; use the labels of this result.");
        }
        if (!seen.insert(*position).second) {
            throw Failure(ExitStatus::kInput, table.place(row, nameColumn) + " names " + name +
                                                  " a second time; give each component one label.");
        }
        Verdict& verdict = verdicts[*position];
        verdict.label = labelIn(unquoted(table.rows[row][labelColumn]), table.place(row, labelColumn));
        verdict.rejected = verdict.label == "noise";
        if (!noteColumn) continue;
        const std::string note = unquoted(table.rows[row][*noteColumn]);
        if (!isMissing(note)) verdict.reason = note;
    }
    return verdicts;
}

std::vector<Verdict> verdictsFor(const std::vector<std::string>& rejected, const std::vector<std::string>& components) {
    std::vector<Verdict> verdicts(components.size());
    for (const std::string& wanted : rejected) {
        auto position = positionOf(wanted, components);
        std::size_t number = 0;
        const auto [end, error] = std::from_chars(wanted.data(), wanted.data() + wanted.size(), number);
        const bool isNumber = error == std::errc() && end == wanted.data() + wanted.size();
        if (!position && isNumber && number >= 1 && number <= components.size()) position = number - 1;
        if (!position) {
            throw Failure(ExitStatus::kInput, "--reject names " + wanted + ", but the result has " +
                                                  rangeOf(components) + ", that is IC 1 to IC " +
                                                  std::to_string(components.size()) + ".");
        }
        verdicts[*position].rejected = true;
    }
    return verdicts;
}

} // namespace zn::headless
