#pragma once

#include "headless/study/planned_run.h"
#include "headless/study/run_outcome.h"

#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// The record of a denoised run, "logs/denoise/NAME.json": outcome, settings, and what the overview shows.
///
///   notes    sentences that the process did not know
///   result   folder as `znica denoise` wrote it; empty when there is none
nlohmann::ordered_json denoiseRecordOf(const PlannedRun& run, const std::string& method,
                                       const std::vector<std::string>& settings, const RunOutcome& outcome,
                                       const std::vector<std::string>& notes, const std::filesystem::path& result);

} // namespace zn::headless
