#include "headless/study/overview_runs.h"

#include "headless/bids/bids_name.h"
#include "headless/bids/read_folder.h"
#include "headless/bids/shallow_json.h"
#include "headless/study/failed_try.h"
#include "headless/study/last_message.h"
#include "headless/study/outliers.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <system_error>

#include <nlohmann/json.hpp>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::string textOr(const nlohmann::json& json, const char* name) {
    const auto found = json.find(name);
    return found != json.end() && found->is_string() ? found->get<std::string>() : "";
}

std::string statusText(int status) {
    return status == 0 ? "done" : status == 4 ? "fewer components" : "no result";
}

void addMeasures(const nlohmann::json& record, OverviewKind kind, OverviewRun& run) {
    for (std::size_t i = 0; i < kOverviewColumns.size(); ++i) {
        const OverviewColumn& column = kOverviewColumns[i];
        const nlohmann::json::json_pointer member(column.member);
        if (column.kind != kind || !record.contains(member) || !record[member].is_number()) continue;
        run.values[i] = record[member].get<double>() * column.scale;
    }
}

std::vector<std::string> textsIn(const nlohmann::json& record, const char* name) {
    std::vector<std::string> texts;
    for (const nlohmann::json& text : record.value(name, nlohmann::json::array())) {
        if (text.is_string()) texts.push_back(text);
    }
    return texts;
}

bool hasFile(const nlohmann::json& record, const std::string& name) {
    const auto files = textsIn(record, "Files");
    return std::find(files.begin(), files.end(), name) != files.end();
}

void addRecord(const nlohmann::json& record, OverviewRun& run) {
    run.exitStatus = record["ExitStatus"].get<int>();
    run.status = statusText(*run.exitStatus);
    run.message = textOr(record, "Message");
    run.notes = textsIn(record, "Notes");
    addMeasures(record, OverviewKind::kAnalysis, run);
    run.report = hasFile(record, run.name + ".html");
    const auto thumbnail = record.find("Thumbnail");
    if (thumbnail != record.end() && thumbnail->is_object()) run.thumbnail = textOr(*thumbnail, "Pixels");
}

// What a later try says that left no result.
void addFailedTry(const fs::path& file, std::vector<std::string>& notes) {
    const auto outcome = lastOutcome(file);
    if (!outcome || !outcome->keepsEarlier || !isNewer(failedTry(file), file)) return;
    notes.push_back("A later try, with other settings or another input, left no result: " + outcome->message);
}

bool isRecord(const nlohmann::json& json) {
    return json.is_object() && json.contains("ExitStatus") && json["ExitStatus"].is_number_integer();
}

nlohmann::json recordIn(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return stream ? parseShallow<nlohmann::json>(stream) : nlohmann::json();
}

void addDenoised(const nlohmann::json& record, OverviewRun& run) {
    DenoisedRun denoised;
    denoised.exitStatus = record["ExitStatus"].get<int>();
    denoised.message = textOr(record, "Message");
    denoised.method = textOr(record, "Method");
    denoised.notes = textsIn(record, "Notes");
    denoised.report = hasFile(record, run.name + "_denoised.html");
    if (denoised.exitStatus == 0) addMeasures(record, OverviewKind::kDenoising, run);
    run.denoised = denoised;
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
    const nlohmann::json record = recordIn(file);
    if (isRecord(record)) {
        addRecord(record, run);
        addFailedTry(file, run.notes);
        const nlohmann::json denoised = recordIn(logs / "denoise" / (name + ".json"));
        if (isRecord(denoised)) {
            addDenoised(denoised, run);
            addFailedTry(logs / "denoise" / (name + ".json"), run.denoised->notes);
        }
        return run;
    }
    run.status = "no record";
    std::error_code error;
    run.message = fs::exists(file, error) ? "its record is damaged; analyse it again."
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

// In a study that denoises, a run without a denoised image says so.
void noteNeverDenoised(std::vector<OverviewRun>& runs) {
    if (std::none_of(runs.begin(), runs.end(), [](const OverviewRun& run) { return run.denoised; })) return;
    for (OverviewRun& run : runs) {
        const int status = run.exitStatus.value_or(-1);
        const bool hasResult = status == 0 || status == 4;
        if (hasResult && !run.denoised) run.notes.emplace_back("Not denoised: it has no labels, or had none yet.");
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
        std::error_code error;
        throw Failure(ExitStatus::kInput,
                      folder.string() +
                          (fs::exists(folder, error) ? " has no records (logs/sub-*.json)" : " does not exist") +
                          "; analyse the runs first with znica bids BIDS_DIR OUT_DIR participant.");
    }
    std::vector<OverviewRun> runs;
    runs.reserve(names.size());
    for (const std::string& name : names) runs.push_back(readRun(logs, name));
    noteNeverDenoised(runs);
    markOutliers(runs);
    return runs;
}

} // namespace zn::headless
