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

// A number of a component, from 1; 0 for any other text.
std::size_t numberOf(std::string_view text, std::size_t count) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number <= count ? number : 0;
}

struct Positions {
    std::size_t first = 0;
    std::size_t last = 0;
};

// "ICA_02", "3" or "3-5"
std::optional<Positions> positionsOf(std::string_view wanted, const std::vector<std::string>& components) {
    if (const auto named = positionOf(std::string(wanted), components)) return Positions{*named, *named};
    const std::size_t dash = wanted.find('-');
    const std::size_t first = numberOf(wanted.substr(0, dash), components.size());
    const std::size_t last =
        dash == std::string_view::npos ? first : numberOf(wanted.substr(dash + 1), components.size());
    if (first == 0 || last < first) return std::nullopt;
    return Positions{first - 1, last - 1};
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
        const auto positions = positionsOf(wanted, components);
        if (!positions) {
            throw Failure(ExitStatus::kInput, "--reject names " + wanted + ", but the result has " +
                                                  rangeOf(components) + ", that is IC 1 to IC " +
                                                  std::to_string(components.size()) + ".");
        }
        for (std::size_t i = positions->first; i <= positions->last; ++i) verdicts[i].rejected = true;
    }
    return verdicts;
}

} // namespace zn::headless
