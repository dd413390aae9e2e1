#include "headless/study/run_study.h"

#include "headless/study/analysis_task.h"
#include "headless/study/run_queue.h"
#include "headless/study/study_folder.h"
#include "headless/study/study_summary.h"

#include <cstdio>
#include <deque>

namespace zn::headless {

namespace {

bool isToDo(RunState state, Rerun rerun) {
    if (rerun == Rerun::kAll || state == RunState::kMissing || state == RunState::kMayBeRepaired) return true;
    return state == RunState::kFinal && rerun == Rerun::kFailed;
}

class Study {
public:
    Study(const StudyPlan& plan, const StudyOptions& options)
        : plan_(plan), options_(options), folder_(options.out), summary_(plan.runs.size()) {}

    ExitStatus carryOut(UnfinishedWork& unfinished) {
        folder_.prepare(options_);
        AnalysisTask analysis(options_, summary_);
        carryOut(analysis, runsToAnalyse(), unfinished);
        std::printf("%s\n", summary_.text().c_str());
        return summary_.status();
    }

private:
    void carryOut(RunTask& task, std::deque<const PlannedRun*> runs, UnfinishedWork& unfinished) {
        RunQueue queue(task, std::move(runs), options_, [this] { return summary_.text(); });
        queue.carryOut(unfinished);
    }

    std::deque<const PlannedRun*> runsToAnalyse() {
        std::deque<const PlannedRun*> runs;
        for (const PlannedRun& run : plan_.runs) {
            const RunState state = stateOf(run, folder_, options_);
            if (isToDo(state, options_.rerun)) {
                runs.push_back(&run);
            } else {
                summary_.add(run.name, recordedOutcome(run.name, folder_).value_or(RunOutcome()));
            }
        }
        const std::size_t kept = plan_.runs.size() - runs.size();
        if (kept > 0 && !options_.run.control.quiet) {
            std::printf("%zu of %zu runs have a record with the same settings and are not repeated.\n", kept,
                        plan_.runs.size());
        }
        return runs;
    }

    const StudyPlan& plan_;
    const StudyOptions& options_;
    StudyFolder folder_;
    StudySummary summary_;
};

} // namespace

ExitStatus runStudy(const StudyPlan& plan, const StudyOptions& options, UnfinishedWork& unfinished) {
    Study study(plan, options);
    return study.carryOut(unfinished);
}

} // namespace zn::headless
