#include "headless/study/analysis_task.h"

#include "headless/failure/failure.h"
#include "headless/run/run_driver.h"
#include "headless/study/place_result.h"
#include "headless/text/byte_sizes.h"
#include "headless/text/text_file.h"

#include <charconv>
#include <exception>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// For --memory: exact, with as many digits as that takes.
std::string exactGib(std::int64_t bytes) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, static_cast<double>(bytes) / kBytesPerGib).ptr;
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
        "run", run.image.string(), "--verbose", "--threads", std::to_string(threads), "--memory", exactGib(memory)};
    for (std::string& setting : runSettings(run, options_)) arguments.push_back(std::move(setting));
    return arguments;
}

// The record is written last: a run without one has no result.
void AnalysisTask::keep(const PlannedRun& run, const RunOutcome& outcome, const fs::path& result) {
    auto json = recordOf(run, runSettings(run, options_), outcome, outcome.hasResult() ? result : fs::path());
    if (outcome.hasResult()) json["Files"] = placeResult(run, result, folder_);
    replaceTextFile(record(run), json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
}

} // namespace zn::headless
