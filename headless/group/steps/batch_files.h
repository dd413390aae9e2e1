#pragma once

#include "headless/group/steps/group_options.h"
#include "headless/group/steps/group_study.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The folder of a study's reduced rows.
std::filesystem::path reductionFolder(const std::filesystem::path& study);

/// "batch-2of5"; its files have the endings .rows and .json.
std::string batchName(const Batch& batch);

/// What the record of a batch of this study is recognised by.
std::string batchBasis(const GroupStudy& study, const Batch& batch);

/// The batches of which the study's folder holds a record, up to date or not, in the order of their names.
std::vector<Batch> recordedBatches(const std::filesystem::path& study);

} // namespace zn::headless
