#pragma once

#include "headless/group/steps/group_options.h"

#include <filesystem>
#include <vector>

namespace zn::headless {

/// Reads a table of runs with the columns `image` and, if wanted, `name`, `mask` and `results`, the folder of its
/// own files; other columns are ignored. Paths are relative to the table's folder. Throws Failure (kInput).
///
///   name    image                                   mask
///   sub-01  sub-01/func/sub-01_task-rest_bold.nii   masks/sub-01.nii
std::vector<ListedRun> readRunList(const std::filesystem::path& file);

/// An image named on the command line; the run is named after it.
ListedRun listedRun(const std::filesystem::path& image);

} // namespace zn::headless
