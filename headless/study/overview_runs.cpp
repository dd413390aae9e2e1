#include "headless/study/overview_runs.h"

#include "headless/bids/bids_name.h"
#include "headless/bids/read_folder.h"
#include "headless/bids/shallow_json.h"
#include "headless/study/last_message.h"
#include "headless/study/outliers.h"

#include <fstream>
#include <set>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

std::string textOr(const Json& json, const char* name) {
    const auto found = json.find(name);
    return found != json.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string statusText(int status) {
    return status == 0 ? "done" : status == 4 ? "fewer components" : "no result";
}

void addRecord(const Json& record, OverviewRun& run) {
    run.exitStatus = record["ExitStatus"].get<int>();
    run.status = statusText(*run.exitStatus);
    run.message = textOr(record, "Message");
    for (const Json& note : record.value("Notes", Json::array())) {
        if (note.is_string()) run.notes.push_back(note);
    }
    for (std::size_t column = 0; column < kOverviewColumns.size(); ++column) {
        const auto value = record.find(kOverviewColumns[column].member);
        if (value == record.end() || !value->is_number()) continue;
        run.values[column] = value->get<double>() * kOverviewColumns[column].scale;
    }
    const Json files = record.value("Files", Json::array());
    run.report = std::find(files.begin(), files.end(), run.name + ".html") != files.end();
    const auto thumbnail = record.find("Thumbnail");
    if (thumbnail != record.end() && thumbnail->is_object()) run.thumbnail = textOr(*thumbnail, "Pixels");
}

OverviewRun readRun(const fs::path& logs, const std::string& name) {
    OverviewRun run;
    run.name = name;
    if (const auto entities = parseBidsName(name + "_bold")) {
        run.participant = "sub-" + entities->label("sub").value_or("");
        run.session = entities->label("ses").value_or("");
        run.task = entities->label("task").value_or("");
    }
    const fs::path file = logs / (name + ".json");
    std::ifstream stream(file, std::ios::binary);
    const Json record = stream ? parseShallow<Json>(stream) : Json();
    if (record.is_object() && record.contains("ExitStatus") && record["ExitStatus"].is_number_integer()) {
        addRecord(record, run);
        return run;
    }
    run.status = "no record";
    run.message = stream.is_open() ? "its record is damaged; analyse it again."
                                   : "it is under way or was killed; analyse it again if nothing is running.";
    const std::string last = lastMessage(logs / (name + ".log"));
    if (!last.empty()) run.message += " Its log says: " + last;
    return run;
}

void markOutliers(std::vector<OverviewRun>& runs) {
    for (std::size_t column = 0; column < kOverviewColumns.size(); ++column) {
        std::vector<double> values;
        for (const OverviewRun& run : runs) {
            if (run.values[column] && run.status != "no result") values.push_back(*run.values[column]);
        }
        const Spread spread = spreadOf(std::move(values));
        for (OverviewRun& run : runs) {
            run.outlying[column] =
                run.values[column] && run.status != "no result" && spread.excludes(*run.values[column]);
        }
    }
}

} // namespace

std::vector<OverviewRun> readOverviewRuns(const fs::path& folder) {
    const fs::path logs = folder / "logs";
    std::set<std::string> names;
    for (const std::string& name : namesIn(logs)) {
        const fs::path file = name;
        if (name.starts_with("sub-") && (file.extension() == ".json" || file.extension() == ".log")) {
            names.insert(file.stem().string());
        }
    }
    if (names.empty()) {
        throw Failure(ExitStatus::kInput, folder.string() + " has no records (logs/sub-*.json); analyse the runs first "
                                                            "with znica bids BIDS_DIR OUT_DIR participant.");
    }
    std::vector<OverviewRun> runs;
    runs.reserve(names.size());
    for (const std::string& name : names) runs.push_back(readRun(logs, name));
    markOutliers(runs);
    return runs;
}

} // namespace zn::headless
