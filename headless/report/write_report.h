#pragma once

#include "headless/report/page_images.h"
#include "headless/report/report_page.h"
#include "headless/result/result_files.h"

#include <filesystem>
#include <optional>

namespace zn::headless {

/// The page of a result, not yet written, made from the files of the folder; images that the run still holds are taken
/// from memory. If an older result lacks the mean image, the page draws the maps over the outline of the mask.
///
///   templateFile   the built template; empty: the one that belongs to the command
///   compared       another result on the same grid, whose components the page shows beside those that they match;
///                  empty: none
///   images         what the run has at hand of its images; nothing: packed from their files
///
/// Throws Failure: kInput when a folder does not hold a complete result, or the grids differ; kOther when the template
/// is missing.
ReportPage makeReport(const ResultFiles& files, const std::filesystem::path& templateFile = {},
                      const std::filesystem::path& compared = {}, const std::optional<PageImages>& images = {});

/// Makes the page of a result and writes it to the result's folder. Throws Failure as above, and (kOther) when the page
/// cannot be written.
void writeReport(const std::filesystem::path& folder, const std::filesystem::path& templateFile = {});

} // namespace zn::headless
