#pragma once

#include "headless/report/report_page.h"
#include "headless/result/result_files.h"

#include <filesystem>

namespace zn::headless {

/// Makes report.html from the files that a run wrote to a folder, and from nothing else, so that the page shows what
/// the folder holds. If an older result lacks the mean image, the page draws the maps over the outline of the mask.
///
///   templateFile   the built template; empty: the one that belongs to the command
///
/// Throws Failure: kInput when the folder does not hold a complete result, kOther when the template is missing or the
/// page cannot be written.
void writeReport(const std::filesystem::path& folder, const std::filesystem::path& templateFile = {});

/// The page of a result, not yet written.
ReportPage makeReport(const ResultFiles& files, const std::filesystem::path& templateFile = {});

} // namespace zn::headless
