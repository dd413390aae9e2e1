#pragma once

#include "headless/study/planned_run.h"
#include "headless/study/run_outcome.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// What a study does with each of its runs, in a process of its own: its analysis, for instance.
class RunTask {
public:
    RunTask() = default;
    RunTask(const RunTask&) = delete;
    RunTask& operator=(const RunTask&) = delete;
    virtual ~RunTask() = default;

    /// "Runs to do", before their number.
    virtual const char* heading() const = 0;

    virtual std::filesystem::path record(const PlannedRun& run) const = 0;
    virtual std::filesystem::path log(const PlannedRun& run) const = 0;

    /// Bytes; 0 where the input cannot be used, which the process itself will say.
    virtual std::int64_t predictedBytes(const PlannedRun& run) const = 0;

    /// Throws Failure with what makes the task impossible for a run.
    virtual void requirePossible(const PlannedRun& run) const = 0;

    /// The command and its arguments, without the folder for the result.
    ///
    ///   memory   bytes above which the process is to refuse to work
    virtual std::vector<std::string> arguments(const PlannedRun& run, int threads, std::int64_t memory) const = 0;

    /// A sentence of the process in terms of the study's options.
    virtual std::string inTermsOfStudy(std::string message) const { return message; }

    /// Moves what the process left in the folder `result` to its places, then writes the record. Throws Failure.
    virtual void keep(const PlannedRun& run, const RunOutcome& outcome, const std::filesystem::path& result) = 0;

    /// A line about a run that has ended.
    virtual std::string text(const PlannedRun& run, const RunOutcome& outcome) const = 0;

    /// Called once per run, after its record was written.
    virtual void ended(const PlannedRun& run, const RunOutcome& outcome) = 0;
    /// Called for the runs that are left when one has failed, if the study is to stop then.
    virtual void notStarted(const PlannedRun& run) = 0;
};

} // namespace zn::headless
