#pragma once

#include "headless/result/unfinished_work.h"
#include "headless/study/active_run.h"
#include "headless/study/capacity.h"
#include "headless/study/run_task.h"
#include "headless/study/study_progress.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <string>

namespace zn::headless {

/// Carries out a task for some runs of a study, as many at once as processors and memory allow.
class RunQueue {
public:
    ///   runs      to do, in this order
    ///   summary   of the study so far, for the sentence of an interruption
    RunQueue(RunTask& task, std::deque<const PlannedRun*> runs, const StudyOptions& options,
             std::function<std::string()> summary);

    /// Returns when all have ended. Failures of single runs are recorded, not thrown.
    void carryOut(UnfinishedWork& unfinished);

private:
    void settleCapacity();
    void step();
    void startRuns();
    void start(const PlannedRun& run, std::int64_t needed);
    void collect();
    void conclude(const PlannedRun& run, RunOutcome outcome, const std::filesystem::path& result);
    std::string endRuns();

    RunTask& task_;
    const StudyOptions& options_;
    StudyFolder folder_;
    std::function<std::string()> summary_;
    StudyProgress progress_;
    Capacity capacity_;
    std::deque<const PlannedRun*> waiting_;
    std::optional<std::int64_t> next_; // predicted for the first that is waiting
    std::mutex guard_;                 // of all that follows
    std::list<ActiveRun> active_;
};

} // namespace zn::headless
