#include "headless/group/steps/spatial_metrics.h"

#include "headless/result/result_files.h"
#include "headless/text/text_file.h"
#include "headless/text/text_lines.h"

#include <array>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::array<std::string_view, 12> kTemporal = {
    "dm_pred_max",  "dm_pred_index", "rms",          "lag1_autocorr", "temporal_entropy",   "power_band_1",
    "power_band_2", "power_band_3",  "power_band_4", "power_band_5",  "explained_variance", "dm_pred_name"};

bool isTemporal(std::string_view column) {
    return std::find(kTemporal.begin(), kTemporal.end(), column) != kTemporal.end();
}

} // namespace

void copySpatialMetrics(const std::filesystem::path& result, const std::filesystem::path& table,
                        const std::filesystem::path& description) {
    const ResultFiles files = ResultFiles::in(result);
    const std::vector<std::string> lines = readLines(files[ResultFile::kMetrics]);
    const auto columns = splitAtTabs(lines.front());
    std::string text = lines.front() + "\n";
    for (std::size_t row = 1; row < lines.size(); ++row) {
        const auto cells = splitAtTabs(lines[row]);
        for (std::size_t column = 0; column < cells.size(); ++column) {
            text += column > 0 ? "\t" : "";
            text += isTemporal(columns[column]) ? "n/a" : cells[column];
        }
        text += '\n';
    }
    writeTextFile(table, text);
    Json json = Json::parse(files.text(ResultFile::kMetricsDescription), nullptr, false);
    for (const std::string_view column : kTemporal) {
        json[std::string(column)]["Description"] =
            "Not applicable: the components were estimated from principal components of the group, not from volumes.";
    }
    writeTextFile(description, json.dump(2) + "\n");
}

} // namespace zn::headless
