#include "headless/study/run_outcome.h"

#include "headless/bids/shallow_json.h"
#include "headless/failure/failure.h"
#include "headless/result/result_files.h"
#include "headless/study/failed_try.h"
#include "headless/study/thumbnail.h"

#include <cstdio>
#include <fstream>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

Json jsonIn(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return parseShallow<Json>(stream);
}

// nullptr where a member is missing on the way.
Json member(const Json& json, std::initializer_list<const char*> names) {
    const Json* at = &json;
    for (const char* name : names) {
        if (!at->is_object() || !at->contains(name)) return nullptr;
        at = &at->at(name);
    }
    return *at;
}

Json meanStability(const Json& components) {
    double sum = 0.0;
    int count = 0;
    for (const Json& component : components.is_array() ? components : Json::array()) {
        const Json index = member(component, {"StabilityIndex"});
        if (!index.is_number()) continue;
        sum += index.get<double>();
        ++count;
    }
    return count > 0 ? Json(sum / count) : Json(nullptr);
}

Json noteTexts(const Json& notes) {
    Json texts = Json::array();
    for (const Json& note : notes.is_array() ? notes : Json::array()) texts.push_back(member(note, {"Text"}));
    return texts;
}

void addResult(const PlannedRun& run, const fs::path& work, Json& record) {
    const ResultFiles files(work, run.name);
    const Json facts = jsonIn(files[ResultFile::kDecomposition]);
    const Json status = jsonIn(files[ResultFile::kStatus]);
    record["ComponentsAsked"] = member(status, {"components_asked"});
    record["ComponentsFound"] = member(status, {"components_found"});
    record["Voxels"] = member(facts, {"Input", "VoxelsAnalysed"});
    record["Volumes"] = member(facts, {"Input", "Volumes"});
    record["RepetitionTime"] = member(facts, {"Input", "RepetitionTime"});
    record["VariancePercent"] = member(facts, {"RetainedVarianceOverTimePercent"});
    record["Stability"] = meanStability(member(facts, {"Components"}));
    record["PredictedPeakMemoryBytes"] = member(facts, {"PredictedPeakMemoryBytes"});
    record["Notes"] = noteTexts(member(facts, {"Input", "Notes"}));
    record["Thumbnail"] = thumbnailOf(files);
}

RunState stateIn(const Json& record, const fs::path& file, const std::vector<std::string>& settings,
                 const std::vector<fs::path>& inputs) {
    if (member(record, {"Settings"}) != Json(settings)) return RunState::kMissing;
    for (const fs::path& input : inputs) {
        if (isNewer(input, file)) return RunState::kMissing;
    }
    const int code = record["ExitStatus"].get<int>();
    if (code == 0 || code == 4) return RunState::kDone;
    return code == 2 || code == 3 ? RunState::kFinal : RunState::kMayBeRepaired;
}

} // namespace

Json recordOf(const PlannedRun& run, const std::vector<std::string>& settings, const RunOutcome& outcome,
              const fs::path& result) {
    const auto label = [&](const char* entity) {
        const auto found = run.entities.label(entity);
        return found ? Json(*found) : Json(nullptr);
    };
    Json record = {{"Run", run.name},
                   {"Participant", "sub-" + run.entities.label("sub").value_or("")},
                   {"Session", label("ses")},
                   {"Task", label("task")},
                   {"Image", run.image.string()},
                   {"Folder", run.folder.string()},
                   {"Version", ZNICA_VERSION},
                   {"Settings", settings},
                   {"ExitStatus", outcome.status},
                   {"Message", outcome.message},
                   {"Seconds", outcome.seconds},
                   {"PeakMemoryBytes", outcome.peakBytes}};
    if (!result.empty()) addResult(run, result, record);
    return record;
}

bool isNewer(const fs::path& file, const fs::path& than) {
    std::error_code error;
    const auto changed = fs::last_write_time(file, error);
    return !error && changed >= fs::last_write_time(than, error) && !error;
}

bool isToDo(RunState state, Rerun rerun) {
    if (rerun == Rerun::kAll || state == RunState::kMissing || state == RunState::kMayBeRepaired) return true;
    return state == RunState::kFinal && rerun == Rerun::kFailed;
}

RunState stateOf(const fs::path& file, const std::vector<std::string>& settings, const std::vector<fs::path>& inputs,
                 Rerun rerun) {
    const Json record = jsonIn(file);
    const Json status = member(record, {"ExitStatus"});
    if (!status.is_number_integer()) return RunState::kMissing;
    const Json version = member(record, {"Version"});
    if (version != ZNICA_VERSION && rerun != Rerun::kAll) {
        throw Failure(ExitStatus::kInput, file.string() + " was written by znica " +
                                              (version.is_string() ? version.get<std::string>() : "?") + ", this is " +
                                              ZNICA_VERSION +
                                              "; repeat everything with --rerun all, or name another folder.");
    }
    const RunState state = stateIn(record, file, settings, inputs);
    if (state != RunState::kMissing || !isOfResult(file)) return state;
    const Json later = jsonIn(failedTry(file));
    const bool isUsable =
        member(later, {"ExitStatus"}).is_number_integer() && member(later, {"Version"}) == ZNICA_VERSION;
    return isUsable ? stateIn(later, failedTry(file), settings, inputs) : state;
}

bool isOfResult(const fs::path& file) {
    const auto outcome = recordedOutcome(file);
    return outcome && outcome->hasResult() && member(jsonIn(file), {"Version"}) == ZNICA_VERSION;
}

std::optional<RunOutcome> recordedOutcome(const fs::path& file) {
    const Json record = jsonIn(file);
    const Json status = member(record, {"ExitStatus"});
    if (!status.is_number_integer()) return std::nullopt;
    RunOutcome outcome;
    outcome.status = status.get<int>();
    const Json message = member(record, {"Message"});
    if (message.is_string()) outcome.message = message.get<std::string>();
    return outcome;
}

std::vector<std::string> recordedSettings(const fs::path& file) {
    std::vector<std::string> settings;
    const Json recorded = member(jsonIn(file), {"Settings"});
    for (const Json& setting : recorded.is_array() ? recorded : Json::array()) {
        if (setting.is_string()) settings.push_back(setting.get<std::string>());
    }
    return settings;
}

std::string outcomeText(const std::string& run, const RunOutcome& outcome, const char* done, const char* failed) {
    char used[64];
    std::snprintf(used, sizeof used, " in %.1f s, %.0f MiB", outcome.seconds,
                  static_cast<double>(outcome.peakBytes) / 1048576.0);
    if (outcome.status == 0) return run + ": " + done + used;
    if (outcome.status == 4) return run + ": " + done + " with fewer components" + used;
    return run + ": " + failed + " (exit status " + std::to_string(outcome.status) + "): " + outcome.message +
           (outcome.keepsEarlier ? " The earlier result is kept." : "");
}

} // namespace zn::headless
