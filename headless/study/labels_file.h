#pragma once

#include "headless/study/planned_run.h"

#include <filesystem>

namespace zn::headless {

/// The table of labels of a run, under the name that its report gives it, in a folder or in the run's own place below
/// that:
///
///   FOLDER/sub-01_ses-1_task-rest_desc-ICA_labels.tsv
///   FOLDER/sub-01/..., FOLDER/sub-01/ses-1/..., FOLDER/sub-01/ses-1/func/...
///
/// A second download counts as well: browsers call it "..._labels (1).tsv". Empty when there is none. Throws Failure
/// (kInput) when there are several, or a folder cannot be read.
std::filesystem::path labelsOf(const PlannedRun& run, const std::filesystem::path& folder);

} // namespace zn::headless
