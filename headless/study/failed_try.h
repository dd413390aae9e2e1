#pragma once

#include "headless/study/run_outcome.h"

#include <filesystem>

#include <nlohmann/json.hpp>

namespace zn::headless {

// A try without a result does not cost an earlier result its record: while the earlier files stay, so does
// "logs/NAME.json", and the record of the try is "logs/failed/NAME.json". The same holds for denoised images.

/// The record of a try that left no result while an earlier one was kept.
std::filesystem::path failedTry(const std::filesystem::path& record);

/// To be called before the files of a result are replaced: until the next record is written, the run has no result,
/// not even after a power cut.
void forgetResult(const std::filesystem::path& record);

/// Writes the record of a run that has ended to where it belongs. Throws Failure (kOther).
void writeRecord(const std::filesystem::path& record, const RunOutcome& outcome, const nlohmann::ordered_json& json);

/// To be called when the result is the wanted one after all, which ends what a later try was about.
void forgetFailedTry(const std::filesystem::path& record);

/// How the last try ended; nothing without a record.
std::optional<RunOutcome> lastOutcome(const std::filesystem::path& record);

} // namespace zn::headless
