#include "headless/study/analysis_task.h"

#include "headless/failure/failure.h"
#include "headless/run/run_driver.h"
#include "headless/study/failed_try.h"
#include "headless/study/place_result.h"
#include "headless/text/byte_sizes.h"

#include <charconv>
#include <cstdio>
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

void replace(std::string& text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    if (at != std::string::npos) text.replace(at, what.size(), by);
}

// "0.5 GiB" becomes "512 MiB", everywhere.
std::string inMebibytes(std::string text) {
    const std::string unit = " GiB";
    for (std::size_t end = text.find(unit); end != std::string::npos; end = text.find(unit, end + 1)) {
        const std::size_t start = text.find_last_not_of("0123456789.e-", end - 1) + 1;
        double number = 0.0;
        if (std::from_chars(text.data() + start, text.data() + end, number).ptr != text.data() + end) continue;
        char mebibytes[32];
        const int length = std::snprintf(mebibytes, sizeof mebibytes, "%.0f MiB", number * 1024.0);
        text.replace(start, end + unit.size() - start, mebibytes, static_cast<std::size_t>(length));
        end = start;
    }
    return text;
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

// The process was given --memory; the user may have given --mem, or neither.
std::string AnalysisTask::inTermsOfStudy(std::string message) const {
    if (options_.run.memoryGib) return message;
    replace(message, " are allowed by --memory", options_.memoryBytes ? " are allowed by --mem" : " are free");
    replace(message, "--memory GIB", "--mem MIB");
    return options_.memoryBytes ? inMebibytes(message) : message;
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
