#pragma once

#include "headless/study/planned_run.h"
#include "headless/study/study_folder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// Moves a finished result, a folder as `znica run` writes it, to its places in the study, file by file, each in one
/// step over an earlier one, and adds the JSON files that describe the images and tables. Files of an earlier result
/// that the new one does not have are removed. The run must not have a record meanwhile. Returns the files relative to
/// the study's folder. Throws Failure (kOther).
std::vector<std::string> placeResult(const PlannedRun& run, const std::filesystem::path& result,
                                     const StudyFolder& study);

} // namespace zn::headless
