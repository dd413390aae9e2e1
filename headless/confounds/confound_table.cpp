#include "headless/confounds/confound_table.h"

#include "headless/failure/failure.h"
#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

void requireDistinct(const TextTable& table, const std::string& name) {
    if (std::count(table.columns.begin(), table.columns.end(), name) < 2) return;
    refuseFile(table.file, "has two columns \"" + name + "\"; rename one.");
}

std::vector<std::size_t> chosenColumns(const TextTable& table, const std::vector<std::string>& names) {
    std::vector<std::size_t> chosen;
    for (const std::string& name : names) {
        const auto column = table.find(name);
        if (!column) {
            refuseFile(table.file, "has no column \"" + name + "\"; --columns takes names from its first line.");
        }
        if (std::find(chosen.begin(), chosen.end(), *column) != chosen.end()) {
            refuseInput("--columns names " + name + " twice.");
        }
        requireDistinct(table, name);
        chosen.push_back(*column);
    }
    if (!names.empty()) return chosen;
    chosen.resize(table.columns.size());
    std::iota(chosen.begin(), chosen.end(), std::size_t{0});
    for (const std::string& name : table.columns) requireDistinct(table, name);
    return chosen;
}

// The row of the first analysed volume.
std::size_t firstRow(const TextTable& table, const AnalysedVolumes& volumes) {
    const std::size_t rows = table.rows.size();
    if (rows == static_cast<std::size_t>(volumes.count())) return 0;
    if (rows == static_cast<std::size_t>(volumes.inImage)) return static_cast<std::size_t>(volumes.omitted);
    refuseFile(table.file, "has " + std::to_string(rows) + " rows of confounds, but the data have " +
                               std::to_string(volumes.inImage) + " volumes; provide one row per volume.");
}

std::vector<float> valuesOf(const TextTable& table, std::size_t column, std::size_t firstRow) {
    std::vector<float> values;
    for (std::size_t row = firstRow; row < table.rows.size(); ++row) {
        const std::string& cell = table.rows[row][column];
        values.push_back(isMissing(cell) ? NAN : numberIn(cell, table.place(row, column)));
    }
    return values;
}

bool varies(const std::vector<float>& values) {
    int present = 0;
    bool different = false;
    float first = NAN;
    for (const float value : values) {
        if (std::isnan(value)) continue;
        if (present++ == 0) first = value;
        different |= value != first;
    }
    return different && present >= 3;
}

} // namespace

Confounds readConfounds(const std::filesystem::path& file, const std::vector<std::string>& columns,
                        const AnalysedVolumes& volumes) {
    const TextTable table = parseTable(readLines(file), file.string());
    const std::size_t first = firstRow(table, volumes);
    Confounds confounds;
    for (const std::size_t column : chosenColumns(table, columns)) {
        auto values = valuesOf(table, column, first);
        if (!varies(values)) {
            confounds.ignored.push_back(table.columns[column]);
            continue;
        }
        confounds.names.push_back(table.columns[column]);
        confounds.values.push_back(std::move(values));
    }
    if (confounds.names.empty()) {
        refuseFile(file, "has no confound that varies over the analysed volumes; choose others with --columns.");
    }
    return confounds;
}

std::optional<std::vector<float>> readConfoundIfAny(const std::filesystem::path& file, const std::string& column,
                                                    const AnalysedVolumes& volumes) {
    const TextTable table = parseTable(readLines(file), file.string());
    const auto found = table.find(column);
    if (!found) return std::nullopt;
    return valuesOf(table, *found, firstRow(table, volumes));
}

} // namespace zn::headless
