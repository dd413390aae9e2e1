#pragma once

#include "headless/run/stopwatch.h"
#include "headless/study/child_process.h"
#include "headless/study/planned_run.h"
#include "headless/study/run_outcome.h"
#include "headless/study/study_folder.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace zn::headless {

/// A run under way: a process of `znica run` that works in a hidden folder of the study. Its output is the run's log.
class ActiveRun {
public:
    /// Starts it. Throws Failure.
    ///
    ///   threads   of the run
    ///   memory    bytes above which it refuses to work
    ///   needed    bytes predicted
    ActiveRun(const PlannedRun& run, const StudyOptions& options, const StudyFolder& folder, int threads,
              std::int64_t memory, std::int64_t needed);
    ActiveRun(ActiveRun&& other) noexcept;
    ActiveRun(const ActiveRun&) = delete;
    ActiveRun& operator=(const ActiveRun&) = delete;
    ActiveRun& operator=(ActiveRun&&) = delete;
    /// Terminates it if it has not ended, waits for its end, and removes the hidden folder.
    ~ActiveRun();

    const PlannedRun& run() const { return *run_; }
    std::int64_t needed() const { return needed_; }
    const ChildProcess& process() const { return process_; }
    /// The result as the process wrote it.
    std::filesystem::path result() const { return work_ / "result"; }

    /// Nothing while it runs; once, how it ended.
    std::optional<RunOutcome> ended();

private:
    const PlannedRun* run_;
    std::filesystem::path log_;
    std::filesystem::path work_; // hidden; empty: handed on
    std::int64_t needed_;
    Stopwatch since_;
    ChildProcess process_;
};

} // namespace zn::headless
