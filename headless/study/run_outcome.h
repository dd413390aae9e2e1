#pragma once

#include "headless/study/planned_run.h"
#include "headless/study/study_folder.h"

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

/// Throws Failure (kInput) for a record of another version of znica, unless everything is repeated anyway.
RunState stateOf(const PlannedRun& run, const StudyFolder& folder, const StudyOptions& options);

/// The outcome in a record; nothing when there is none or it is damaged.
std::optional<RunOutcome> recordedOutcome(const std::string& run, const StudyFolder& folder);

/// "sub-01_task-rest: done in 34 s, 812 MiB"
std::string outcomeText(const std::string& run, const RunOutcome& outcome);

} // namespace zn::headless
