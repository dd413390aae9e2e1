#include "headless/study/denoise_outcome.h"

#include "headless/result/result_files.h"
#include "headless/text/text_lines.h"
#include "headless/text/text_table.h"

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// The measures before and after: {"dvars_mean": {"Before": 8.2, "After": 5.1}, ...}
Json qualityIn(const fs::path& file) {
    const TextTable table = parseTable(readLines(file), file.string());
    const auto measure = table.find("measure");
    const auto before = table.find("before");
    const auto after = table.find("after");
    Json quality = Json::object();
    if (!measure || !before || !after) return quality;
    const auto number = [&](std::size_t row, std::size_t column) {
        return isMissing(table.rows[row][column]) ? Json(nullptr) : Json(table.number(row, column));
    };
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        quality[table.rows[row][*measure]] = {{"Before", number(row, *before)}, {"After", number(row, *after)}};
    }
    return quality;
}

} // namespace

Json denoiseRecordOf(const PlannedRun& run, const std::string& method, const std::vector<std::string>& settings,
                     const RunOutcome& outcome, const std::vector<std::string>& notes, const fs::path& result) {
    Json record = {{"Run", run.name},
                   {"Image", run.image.string()},
                   {"Labels", run.labels.string()},
                   {"Method", method},
                   {"Version", ZNICA_VERSION},
                   {"Settings", settings},
                   {"ExitStatus", outcome.status},
                   {"Message", outcome.message},
                   {"Seconds", outcome.seconds},
                   {"PeakMemoryBytes", outcome.peakBytes},
                   {"Notes", notes}};
    if (!result.empty()) record["Quality"] = qualityIn(ResultFiles(result, run.name)[ResultFile::kDenoiseQc]);
    return record;
}

} // namespace zn::headless
