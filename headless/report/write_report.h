#pragma once

#include "headless/failure/failure.h"

#include <filesystem>

namespace zn::headless {

/// Makes report.html from the files that a run left in a folder, and from nothing else, so that the page shows what the
/// folder holds. The mean image is "..._desc-mean_bold.nii.gz"; where an older result lacks it, the page draws the maps
/// over the outline of the mask.
///
///   templateFile   the built page; empty: the one that belongs to the command
///
/// Throws Failure: kInput when the folder is no complete result, kOther when the template is missing or the page cannot
/// be written.
void writeReport(const std::filesystem::path& folder, const std::filesystem::path& templateFile = {});

/// `znica report DIR`
ExitStatus reportCommand(const std::filesystem::path& folder);

} // namespace zn::headless
