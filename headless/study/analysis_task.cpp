#include "headless/study/analysis_task.h"

#include "headless/failure/failure.h"
#include "headless/run/run_driver.h"
#include "headless/study/failed_try.h"
#include "headless/study/place_result.h"

#include <charconv>
#include <exception>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::string gibText(std::int64_t bytes) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<double>(bytes) / 1073741824.0).ptr;
    return {text, end};
}

} // namespace

std::int64_t AnalysisTask::predictedBytes(const PlannedRun& run) const {
    if (!run.problem.empty()) return 0;
    try {
        return forecastRun(runOptions(run, options_)).peakBytes;
    } catch (const std::exception&) {
        return 0;
    }
}

void AnalysisTask::requirePossible(const PlannedRun& run) const {
    if (!run.problem.empty()) throw Failure(ExitStatus::kInput, run.problem);
}

std::vector<std::string> AnalysisTask::arguments(const PlannedRun& run, int threads, std::int64_t memory) const {
    std::vector<std::string> arguments = {
        "run", run.image.string(), "--verbose", "--threads", std::to_string(threads), "--memory", gibText(memory)};
    for (std::string& setting : runSettings(run, options_)) arguments.push_back(std::move(setting));
    return arguments;
}

// An earlier result keeps its record until the new one takes its place; the new record is written last.
void AnalysisTask::keep(const PlannedRun& run, const RunOutcome& outcome, const fs::path& result) {
    auto json = recordOf(run, runSettings(run, options_), outcome, outcome.hasResult() ? result : fs::path());
    if (outcome.hasResult()) {
        forgetResult(record(run));
        json["Files"] = placeResult(run, result, folder_);
    }
    writeRecord(record(run), outcome, json);
}

} // namespace zn::headless
