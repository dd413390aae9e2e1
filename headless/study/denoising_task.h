#pragma once

#include "headless/study/run_task.h"
#include "headless/study/study_folder.h"
#include "headless/study/study_summary.h"

namespace zn::headless {

/// The denoising of a run's image with `znica denoise`, from its result in the study and its labels.
class DenoisingTask : public RunTask {
public:
    DenoisingTask(const StudyOptions& options, StudySummary& summary)
        : options_(options), folder_(options.out), summary_(summary) {}

    const char* heading() const override { return "Images to denoise"; }
    std::filesystem::path record(const PlannedRun& run) const override { return folder_.denoiseRecord(run.name); }
    std::filesystem::path log(const PlannedRun& run) const override { return folder_.denoiseLog(run.name); }
    std::int64_t predictedBytes(const PlannedRun& run) const override;
    void requirePossible(const PlannedRun& run) const override;
    std::vector<std::string> arguments(const PlannedRun& run, int threads, std::int64_t memory) const override;
    void keep(const PlannedRun& run, const RunOutcome& outcome, const std::filesystem::path& result) override;
    std::string text(const PlannedRun& run, const RunOutcome& outcome) const override {
        return outcomeText(run.name, outcome, "denoised", "not denoised");
    }
    void ended(const PlannedRun& run, const RunOutcome& outcome) override { summary_.addDenoised(run.name, outcome); }
    void notStarted(const PlannedRun& run) override { summary_.addNotDenoised(run.name); }

    /// Whether the labels were made before the result, so that they may belong to another one.
    bool hasOlderLabels(const PlannedRun& run) const;

private:
    const StudyOptions& options_;
    StudyFolder folder_;
    StudySummary& summary_;
};

} // namespace zn::headless
