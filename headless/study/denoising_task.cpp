#include "headless/study/denoising_task.h"

#include "headless/denoise/denoising_memory.h"
#include "headless/failure/failure.h"
#include "headless/study/denoise_outcome.h"
#include "headless/study/denoise_settings.h"
#include "headless/study/failed_try.h"
#include "headless/study/place_result.h"

#include <exception>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

constexpr char kOlderLabels[] = "The labels are older than the result; they are valid only if it is a repetition, with "
                                "the same settings and seed, of the result that was labelled.";

} // namespace

std::int64_t DenoisingTask::predictedBytes(const PlannedRun& run) const {
    try {
        return denoisingBytes(readImageHeader(run.image));
    } catch (const std::exception&) {
        return 0;
    }
}

void DenoisingTask::requirePossible(const PlannedRun& run) const {
    if (!run.labelsProblem.empty()) throw Failure(ExitStatus::kInput, run.labelsProblem);
    const fs::path analysis = folder_.record(run.name);
    const auto analysed = recordedOutcome(analysis);
    if (!analysed) throw Failure(ExitStatus::kOther, "the run has no result yet; analyse it first.");
    if (!analysed->hasResult()) {
        throw Failure(static_cast<ExitStatus>(analysed->status),
                      "the analysis of the run left no result: " + analysed->message);
    }
    if (isNewer(run.image, analysis) && !isNewer(analysis, run.image)) { // not merely written within a tick
        throw Failure(ExitStatus::kInput, run.image.string() + " is newer than its result, to which the labels belong; "
                                                               "analyse it again (--rerun all), then label it.");
    }
}

std::vector<std::string> DenoisingTask::arguments(const PlannedRun& run, int threads, std::int64_t) const {
    std::vector<std::string> arguments = {"denoise", (folder_.path() / run.folder).string(), run.image.string(),
                                          "--threads", std::to_string(threads)};
    for (std::string& setting : denoiseSettings(run, options_)) arguments.push_back(std::move(setting));
    return arguments;
}

// As with an analysis.
void DenoisingTask::keep(const PlannedRun& run, const RunOutcome& outcome, const fs::path& result) {
    std::vector<std::string> notes;
    if (hasOlderLabels(run)) notes.emplace_back(kOlderLabels);
    auto json = denoiseRecordOf(run, nameOf(*options_.denoise), denoiseSettings(run, options_), outcome, notes,
                                outcome.hasResult() ? result : fs::path());
    if (outcome.hasResult()) {
        forgetResult(record(run));
        json["Files"] = placeDenoised(run, result, folder_);
    }
    writeRecord(record(run), outcome, json);
}

bool DenoisingTask::hasOlderLabels(const PlannedRun& run) const {
    return isNewer(folder_.record(run.name), run.labels);
}

} // namespace zn::headless
