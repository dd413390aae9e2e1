#pragma once

#include "headless/study/planned_run.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The names of the JSON files that writeDescriptions may write for a run.
std::vector<std::string> descriptionNames(const std::string& run);

/// Writes a JSON file beside every image and table of a finished result that does not have one yet: what it contains,
/// its sources, and what BIDS requires of its kind. Throws Failure (kOther).
void writeDescriptions(const PlannedRun& run, const std::filesystem::path& result);

} // namespace zn::headless
