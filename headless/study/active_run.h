#pragma once

#include "headless/run/stopwatch.h"
#include "headless/study/child_process.h"
#include "headless/study/planned_run.h"
#include "headless/study/run_outcome.h"
#include "headless/study/study_folder.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// A run under way: a process of this command that works in a hidden folder of the study. Its output is the run's log.
/// In the end the process is terminated if it still runs, and the hidden folder is removed.
class ActiveRun {
public:
    /// Starts it. Throws Failure.
    ///
    ///   arguments   of znica, without --out
    ///   needed      bytes predicted
    ActiveRun(const PlannedRun& run, const StudyFolder& folder, const std::filesystem::path& log,
              std::vector<std::string> arguments, std::int64_t needed);

    const PlannedRun& run() const { return *run_; }
    std::int64_t needed() const { return needed_; }
    const ChildProcess& process() const { return process_; }
    /// The result as the process wrote it.
    std::filesystem::path result() const { return *work_ / "result"; }

    /// Nothing while it runs; once, how it ended.
    std::optional<RunOutcome> ended();

private:
    struct RemoveFolder {
        void operator()(const std::filesystem::path* folder) const;
    };

    const PlannedRun* run_;
    std::filesystem::path log_;
    std::unique_ptr<const std::filesystem::path, RemoveFolder> work_; // hidden
    std::int64_t needed_;
    Stopwatch since_;
    ChildProcess process_; // last: its destructor waits for the process, which writes into the folder
};

} // namespace zn::headless
