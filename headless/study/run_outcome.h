#pragma once

#include "headless/study/planned_run.h"

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// How a run ended; ExitStatus, or 128 + signal.
struct RunOutcome {
    int status = 0;
    std::string message; ///< the sentence of a run that failed
    double seconds = 0.0;
    std::int64_t peakBytes = 0;
    bool keepsEarlier = false; ///< without a result, but that of an earlier try is kept

    bool hasResult() const { return status == 0 || status == 4; }
};

/// The record of a run, "logs/NAME.json": outcome, settings, and what the overview shows.
///
///   result   folder of the result as `znica run` wrote it; empty when there is none
nlohmann::ordered_json recordOf(const PlannedRun& run, const std::vector<std::string>& settings,
                                const RunOutcome& outcome, const std::filesystem::path& result);

/// What is known of a run before it starts.
enum class RunState {
    kMissing,      ///< no usable record, other settings, or an input that is newer than the record
    kDone,         ///< with a result
    kFinal,        ///< without a result, which another try would not change
    kMayBeRepaired ///< without a result because of memory, a signal or the like
};

/// What the record in a file says, or that of a later try without a result (failed_try.h), given the settings of now
/// and the files on which its result depends. Throws Failure (kInput) for a record of another version of znica, unless
/// everything is repeated anyway.
RunState stateOf(const std::filesystem::path& file, const std::vector<std::string>& settings,
                 const std::vector<std::filesystem::path>& inputs, Rerun rerun);

/// Whether a run in this state is to be done.
bool isToDo(RunState state, Rerun rerun);

/// Whether a file was changed after another one was written. Equal times count as newer: clocks of file systems tick in
/// milliseconds, some in seconds. False when one of them does not exist.
bool isNewer(const std::filesystem::path& file, const std::filesystem::path& than);

/// Whether a record is that of a result of this version.
bool isOfResult(const std::filesystem::path& file);

/// The outcome in a record; nothing when there is none or it is damaged.
std::optional<RunOutcome> recordedOutcome(const std::filesystem::path& file);

/// The settings in a record; none when there is none or it is damaged.
std::vector<std::string> recordedSettings(const std::filesystem::path& file);

/// "sub-01_task-rest: done in 34 s, 812 MiB"
///
///   done     what a run without a failure is
///   failed   what one with a failure is
std::string outcomeText(const std::string& run, const RunOutcome& outcome, const char* done = "done",
                        const char* failed = "no result");

} // namespace zn::headless
