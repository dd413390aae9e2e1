#pragma once

#include "headless/study/run_task.h"
#include "headless/study/study_folder.h"
#include "headless/study/study_summary.h"

namespace zn::headless {

/// The analysis of a run with `znica run`.
class AnalysisTask : public RunTask {
public:
    AnalysisTask(const StudyOptions& options, StudySummary& summary)
        : options_(options), folder_(options.out), summary_(summary) {}

    const char* heading() const override { return "Runs to do"; }
    std::filesystem::path record(const PlannedRun& run) const override { return folder_.record(run.name); }
    std::filesystem::path log(const PlannedRun& run) const override { return folder_.log(run.name); }
    std::int64_t predictedBytes(const PlannedRun& run) const override;
    void requirePossible(const PlannedRun& run) const override;
    std::vector<std::string> arguments(const PlannedRun& run, int threads, std::int64_t memory) const override;
    std::string inTermsOfStudy(std::string message) const override;
    void keep(const PlannedRun& run, const RunOutcome& outcome, const std::filesystem::path& result) override;
    std::string text(const PlannedRun& run, const RunOutcome& outcome) const override {
        return outcomeText(run.name, outcome);
    }
    void ended(const PlannedRun& run, const RunOutcome& outcome) override { summary_.add(run.name, outcome); }
    void notStarted(const PlannedRun& run) override { summary_.addNotStarted(run.name); }

private:
    const StudyOptions& options_;
    StudyFolder folder_;
    StudySummary& summary_;
};

} // namespace zn::headless
