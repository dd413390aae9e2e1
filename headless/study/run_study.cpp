#include "headless/study/run_study.h"

#include "headless/bids/word_list.h"
#include "headless/study/analysis_task.h"
#include "headless/study/denoise_settings.h"
#include "headless/study/denoising_task.h"
#include "headless/study/failed_try.h"
#include "headless/study/run_queue.h"
#include "headless/study/study_folder.h"
#include "headless/study/study_summary.h"

#include <cstdio>
#include <deque>
#include <utility>
#include <vector>

namespace zn::headless {

namespace {

namespace fs = std::filesystem;

std::string inOneLine(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
    return text;
}

class Study {
public:
    Study(const StudyPlan& plan, const StudyOptions& options)
        : plan_(plan), options_(options), folder_(options.out), summary_(plan.runs.size()) {}

    ExitStatus carryOut(UnfinishedWork& unfinished) {
        folder_.prepare(options_);
        AnalysisTask analysis(options_, summary_);
        carryOut(analysis, runsToAnalyse(), unfinished);
        if (options_.denoise && !summary_.isStopped()) {
            DenoisingTask denoising(options_, summary_);
            carryOut(denoising, runsToDenoise(denoising), unfinished);
        }
        std::printf("%s\n", summary_.text().c_str());
        return summary_.status();
    }

private:
    using Runs = std::deque<const PlannedRun*>;

    void carryOut(RunTask& task, Runs runs, UnfinishedWork& unfinished) {
        RunQueue queue(task, std::move(runs), options_, [this] { return summary_.text(); });
        queue.carryOut(unfinished);
    }

    Runs runsToAnalyse() {
        Runs runs;
        Runs replaced;          // with a result of other settings
        std::size_t others = 0; // with a result that does not fit the options, but the labels
        for (const PlannedRun& run : plan_.runs) {
            const fs::path record = folder_.record(run.name);
            const RunState state = stateOf(record, runSettings(run, options_), inputsOf(run, options_), options_.rerun);
            const RunOutcome earlier = recordedOutcome(record).value_or(RunOutcome{-1, "", 0.0, 0});
            const bool keepsAny = options_.denoise && options_.rerun != Rerun::kAll && earlier.hasResult();
            if (state == RunState::kDone) forgetFailedTry(record);
            if (isToDo(state, options_.rerun) && !keepsAny) {
                runs.push_back(&run);
                if (hasOtherSettings(run)) replaced.push_back(&run);
                continue;
            }
            others += state == RunState::kMissing ? 1 : 0;
            summary_.add(run.name, keepsAny ? earlier : lastOutcome(record).value_or(earlier));
        }
        const std::size_t same = plan_.runs.size() - runs.size() - others;
        sayKept(same, same == 1 ? "has a record with the same settings and is not repeated"
                                : "have a record with the same settings and are not repeated");
        sayKept(others,
                others == 1
                    ? "keeps its result, although settings or image have changed, because labels may belong to it "
                      "(--rerun all replaces it)"
                    : "keep their results, although settings or images have changed, because labels may belong "
                      "to them (--rerun all replaces them)");
        sayReplaced(replaced);
        return runs;
    }

    bool hasOtherSettings(const PlannedRun& run) const {
        const fs::path record = folder_.record(run.name);
        return isOfResult(record) && recordedSettings(record) != runSettings(run, options_);
    }

    void sayReplaced(const Runs& runs) const {
        if (runs.empty()) return;
        const std::string settings = inOneLine(recordedSettings(folder_.record(runs.front()->name)));
        std::fprintf(
            stderr,
            "znica: %zu %s with other settings, to be replaced (%s: %s); to keep %s, interrupt this command and "
            "name another OUT_DIR.\n",
            runs.size(), runs.size() == 1 ? "run has a result" : "runs have results", runs.front()->name.c_str(),
            settings.empty() ? "no options" : settings.c_str(), runs.size() == 1 ? "it" : "them");
    }

    Runs runsToDenoise(const DenoisingTask& task) {
        Runs runs;
        std::vector<std::string> older;
        std::size_t done = 0;
        for (const PlannedRun& run : plan_.runs) {
            if (run.labels.empty() && run.labelsProblem.empty()) {
                summary_.addUnlabelled(run.name);
                continue;
            }
            const fs::path record = folder_.denoiseRecord(run.name);
            const RunState state =
                stateOf(record, denoiseSettings(run, options_), denoiseInputs(run, folder_), options_.rerun);
            if (state == RunState::kDone) forgetFailedTry(record);
            if (isToDo(state, options_.rerun)) {
                runs.push_back(&run);
                if (task.hasOlderLabels(run)) older.push_back(run.name);
            } else {
                ++done;
                summary_.addDenoised(run.name, lastOutcome(record).value_or(RunOutcome()));
            }
        }
        sayKept(done, done == 1 ? "has a record of denoising with the same settings and labels and is not repeated"
                                : "have a record of denoising with the same settings and labels and are not repeated");
        if (!older.empty()) {
            std::fprintf(stderr,
                         "znica: Labels that are older than the result, and valid only if it repeats the one "
                         "that was labelled: %s.\n",
                         wordList(older).c_str());
        }
        return runs;
    }

    void sayKept(std::size_t count, const char* why) const {
        if (count == 0 || options_.run.control.quiet) return;
        std::printf("%zu of %zu %s %s.\n", count, plan_.runs.size(), plan_.runs.size() == 1 ? "run" : "runs", why);
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
