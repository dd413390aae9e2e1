#include "headless/study/run_study.h"

#include "headless/failure/as_failure.h"
#include "headless/run/run_driver.h"
#include "headless/study/active_run.h"
#include "headless/study/capacity.h"
#include "headless/study/place_result.h"
#include "headless/study/study_progress.h"
#include "headless/study/study_summary.h"
#include "headless/text/text_file.h"

#include <algorithm>
#include <cstdio>
#include <deque>
#include <exception>
#include <list>
#include <mutex>
#include <system_error>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

// Bytes predicted for a run; 0 where its input cannot be used, which the run itself will say.
std::int64_t predictedBytes(const PlannedRun& run, const StudyOptions& options) {
    if (!run.problem.empty()) return 0;
    try {
        return forecastRun(runOptions(run, options)).peakBytes;
    } catch (const std::exception&) {
        return 0;
    }
}

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
        chooseRuns();
        StudyProgress progress(waiting_.size(), options_.run.control.quiet);
        if (!waiting_.empty()) settleCapacity();
        unfinished.atInterrupt([this] { return endRuns(); });
        while (!waiting_.empty() || !active_.empty()) step(progress);
        progress.clear();
        unfinished.atInterrupt({});
        std::printf("%s\n", summary_.text().c_str());
        return summary_.status();
    }

private:
    void chooseRuns() {
        for (const PlannedRun& run : plan_.runs) {
            const RunState state = stateOf(run, folder_, options_);
            if (isToDo(state, options_.rerun)) {
                waiting_.push_back(&run);
            } else {
                summary_.add(run.name, recordedOutcome(run.name, folder_).value_or(RunOutcome()));
            }
        }
        const std::size_t kept = plan_.runs.size() - waiting_.size();
        if (kept == 0 || options_.run.control.quiet) return;
        std::printf("%zu of %zu runs have a record with the same settings and are not repeated.\n", kept,
                    plan_.runs.size());
    }

    void settleCapacity() {
        next_ = predictedBytes(*waiting_.front(), options_);
        capacity_ = capacityFor(options_, waiting_.size(), *next_);
        if (options_.run.control.quiet) return;
        std::printf("Runs to do: %zu; processors: %d; threads per run: %d; memory: %.1f GiB.\n", waiting_.size(),
                    capacity_.processors, capacity_.threads, static_cast<double>(capacity_.memory) / 1073741824.0);
        std::fflush(stdout);
    }

    void step(StudyProgress& progress) {
        constexpr int kRedrawing = 1000; // milliseconds
        std::vector<int> descriptors;
        {
            const std::scoped_lock lock(guard_);
            startRuns(progress);
            std::vector<std::string> names;
            for (const ActiveRun& run : active_) {
                descriptors.push_back(run.process().descriptor());
                names.push_back(run.run().name);
            }
            progress.draw(names);
        }
        if (!descriptors.empty()) waitForAny(descriptors, kRedrawing);
        const std::scoped_lock lock(guard_);
        collect(progress);
    }

    void startRuns(StudyProgress& progress) {
        while (!waiting_.empty()) {
            if (!next_) next_ = predictedBytes(*waiting_.front(), options_);
            std::int64_t reserved = 0;
            for (const ActiveRun& run : active_) reserved += run.needed();
            if (!capacity_.fits(active_.size(), reserved, *next_)) return;
            const PlannedRun& run = *waiting_.front();
            start(run, *next_, progress);
            next_.reset();
            if (!waiting_.empty() && waiting_.front() == &run) waiting_.pop_front();
        }
    }

    void start(const PlannedRun& run, std::int64_t needed, StudyProgress& progress) {
        std::error_code error;
        fs::remove(folder_.record(run.name), error);
        try {
            if (!run.problem.empty()) throw Failure(ExitStatus::kInput, run.problem);
            active_.emplace_back(run, options_, folder_, capacity_.threads, capacity_.memory, needed);
        } catch (const std::exception& error_) {
            const Failure failure = asFailure(error_);
            record(run, {static_cast<int>(failure.status()), failure.what(), 0.0, 0}, {}, progress);
        }
    }

    void collect(StudyProgress& progress) {
        for (auto run = active_.begin(); run != active_.end();) {
            const auto outcome = run->ended();
            if (outcome) record(run->run(), *outcome, run->result(), progress);
            run = outcome ? active_.erase(run) : std::next(run);
        }
    }

    // The record is written last: a run without one has no result.
    void record(const PlannedRun& run, RunOutcome outcome, const fs::path& result, StudyProgress& progress) {
        try {
            auto json = recordOf(run, runSettings(run, options_), outcome, outcome.hasResult() ? result : fs::path());
            if (outcome.hasResult()) json["Files"] = placeResult(run, result, folder_);
            replaceTextFile(folder_.record(run.name),
                            json.dump(1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n");
        } catch (const std::exception& error) {
            const Failure failure = asFailure(error);
            outcome.status = static_cast<int>(failure.status());
            outcome.message = failure.what();
        }
        summary_.add(run.name, outcome);
        progress.ended(outcomeText(run.name, outcome));
        if (outcome.hasResult() || !options_.stopOnFirstCrash) return;
        for (const PlannedRun* left : waiting_) {
            if (left != &run) summary_.addNotStarted(left->name);
        }
        waiting_.clear();
    }

    // On the thread that deals with signals; the process ends afterwards.
    std::string endRuns() {
        guard_.lock(); // for good
        for (const ActiveRun& run : active_) run.process().terminate();
        active_.clear();
        return summary_.text() + "; give the same command again to continue.";
    }

    const StudyPlan& plan_;
    const StudyOptions& options_;
    StudyFolder folder_;
    StudySummary summary_;
    Capacity capacity_;
    std::deque<const PlannedRun*> waiting_;
    std::optional<std::int64_t> next_; // predicted for the first that is waiting
    std::mutex guard_;                 // of all that follows
    std::list<ActiveRun> active_;
};

} // namespace

ExitStatus runStudy(const StudyPlan& plan, const StudyOptions& options, UnfinishedWork& unfinished) {
    Study study(plan, options);
    return study.carryOut(unfinished);
}

} // namespace zn::headless
