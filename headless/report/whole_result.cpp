#include "headless/report/whole_result.h"

#include "headless/result/metrics.h"
#include "headless/result/result_names.h"
#include "headless/text/input_file.h"
#include "headless/text/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <limits>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using Row = std::vector<std::string_view>;

[[noreturn]] void refuse(const fs::path& file, const std::string& why) {
    refuseFile(file, "is damaged: " + why + "; create the result again.");
}

// Deeper than any record; beyond some ten thousand levels, writing it into the page would exhaust the stack.
constexpr int kMaxNesting = 64;

Json objectIn(const ResultFiles& files, ResultFile file) {
    bool tooDeep = false;
    const auto limit = [&tooDeep](int depth, Json::parse_event_t, const Json&) {
        tooDeep |= depth > kMaxNesting;
        return depth <= kMaxNesting;
    };
    Json json = Json::parse(files.text(file), limit, false);
    if (tooDeep) refuse(files[file], "it is nested too deeply");
    if (!json.is_object()) refuse(files[file], "it is not a JSON object");
    return json;
}

constexpr const char* kNumbers[] = {"/Input/Volumes",           "/Input/RepetitionTimeMilliseconds",
                                    "/Settings/Components",     "/Settings/FirstEigenvalue",
                                    "/Settings/LastEigenvalue", "/Settings/Epsilon",
                                    "/Settings/MaxIterations",  "/Settings/ZThreshold",
                                    "/ComponentsFound",         "/ElapsedSeconds/Total",
                                    "/PeakMemoryBytes"};
constexpr const char* kTexts[] = {"/GeneratedBy/Version", "/GeneratedBy/Plugin/Version", "/Input/File",
                                  "/Settings/Nonlinearity"};
constexpr const char* kLists[] = {"/Input/Size", "/Predictors", "/Regions", "/Components", "/Eigenvalues"};

// Columns of numbers that older results lack.
constexpr const char* kOptionalColumns[] = {"explained_variance", "map_skewness", "map_kurtosis", "confound_max_corr"};

// The non-empty lines of a table, header first. The texts are views into `lines`.
std::vector<Row> rowsOf(const std::vector<std::string>& lines, const fs::path& file) {
    std::vector<Row> rows;
    for (const std::string& line : lines) {
        if (line.empty()) continue;
        rows.push_back(splitAtTabs(line));
        if (rows.back().size() == rows.front().size()) continue;
        refuse(file, "its row " + std::to_string(rows.size() - 1) + " has " + std::to_string(rows.back().size()) +
                         " cells, but its header has " + std::to_string(rows.front().size()));
    }
    return rows;
}

void requireRows(const std::vector<Row>& rows, int wanted, const char* what, const fs::path& file) {
    const auto have = static_cast<int>(rows.size()) - 1;
    if (have == wanted) return;
    refuse(file, "it has " + std::to_string(have) + " rows for " + std::to_string(wanted) + " " + what);
}

// Infinities count as numbers: the plug-in may have written them.
void requireNumber(std::string_view cell, const fs::path& file) {
    double number = 0.0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    if (cell == "n/a" || (end == cell.data() + cell.size() && error != std::errc::invalid_argument)) return;
    refuse(file, "it holds \"" + std::string(cell) + "\" where a number is expected");
}

std::size_t columnNamed(std::string_view name, const Row& header, const fs::path& file) {
    const auto found = std::find(header.begin(), header.end(), name);
    if (found == header.end()) refuse(file, "it has no column \"" + std::string(name) + "\"");
    return static_cast<std::size_t>(found - header.begin());
}

void requireMetrics(const fs::path& file, int maps) {
    const auto lines = readLines(file);
    const auto rows = rowsOf(lines, file);
    requireRows(rows, maps, "component maps", file);
    const std::size_t name = columnNamed("component", rows.front(), file);
    for (int i = 0; i < maps; ++i) {
        const std::string_view named = rows[static_cast<std::size_t>(i) + 1][name];
        if (named == componentName(i)) continue;
        refuse(file, "its row " + std::to_string(i + 1) + " is for " + std::string(named) + ", but the map is " +
                         componentName(i));
    }
    const auto requireNumbers = [&](std::size_t column) {
        for (std::size_t row = 1; row < rows.size(); ++row) requireNumber(rows[row][column], file);
    };
    for (const Metric& metric : kMetrics) requireNumbers(columnNamed(metric.column, rows.front(), file));
    for (const char* name : kOptionalColumns) {
        const auto column = std::find(rows.front().begin(), rows.front().end(), name);
        if (column != rows.front().end()) requireNumbers(static_cast<std::size_t>(column - rows.front().begin()));
    }
}

// A table of time courses, one row per volume.
void requireCourses(const fs::path& file, const std::vector<Row>& rows, int volumes) {
    requireRows(rows, volumes, "volumes", file);
    for (std::size_t row = 1; row < rows.size(); ++row) {
        for (const std::string_view cell : rows[row]) requireNumber(cell, file);
    }
}

void requireMixing(const fs::path& file, int maps, int volumes) {
    const auto lines = readLines(file);
    const auto rows = rowsOf(lines, file);
    const auto columns = static_cast<int>(rows.front().size());
    if (columns != maps) {
        refuse(file, "it has " + std::to_string(columns) + " columns for " + std::to_string(maps) + " component maps");
    }
    for (int i = 0; i < maps; ++i) columnNamed(componentName(i), rows.front(), file);
    requireCourses(file, rows, volumes);
}

} // namespace

Json readRecord(const ResultFiles& files) {
    constexpr ResultFile kFile = ResultFile::kDecomposition;
    Json record = objectIn(files, kFile);
    const auto require = [&](const char* key, auto isRight, const char* kind) {
        const Json::json_pointer place(key);
        if (record.contains(place) && std::invoke(isRight, record[place])) return;
        refuse(files[kFile], "it has no " + std::string(kind) + " at " + key);
    };
    const auto isNumberOrNull = [](const Json& value) { return value.is_number() || value.is_null(); };
    const auto isCount = [](const Json& value) {
        return value.is_number_integer() && value >= 1 && value <= std::numeric_limits<std::int32_t>::max();
    };
    for (const char* key : kNumbers) require(key, &Json::is_number, "number");
    require("/Input/Volumes", isCount, "number of volumes");
    for (const char* key : kTexts) require(key, &Json::is_string, "text");
    for (const char* key : kLists) require(key, &Json::is_array, "list");
    require("/RetainedVariancePercent", isNumberOrNull, "number");
    return record;
}

Json readColumnDescriptions(const ResultFiles& files) {
    return objectIn(files, ResultFile::kMetricsDescription);
}

void requireCompleteTables(const ResultFiles& files, int maps, int volumes) {
    requireMetrics(files[ResultFile::kMetrics], maps);
    requireMixing(files[ResultFile::kMixing], maps, volumes);
    if (!files.has(ResultFile::kDesign)) return;
    const std::filesystem::path design = files[ResultFile::kDesign];
    const auto lines = readLines(design);
    requireCourses(design, rowsOf(lines, design), volumes);
}

} // namespace zn::headless
