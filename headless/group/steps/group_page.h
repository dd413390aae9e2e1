#pragma once

#include "headless/group/steps/group_maps.h"
#include "headless/group/steps/group_study.h"
#include "headless/report/report_page.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The tables over all runs, as they are in their files.
struct GroupTables {
    std::string amplitudes;
    std::string correlations;
    std::vector<bool> outlying; ///< [run]: some component's amplitude is an outlier
};

/// The name of the page in the study's folder.
inline constexpr char kGroupPage[] = "desc-groupICA_report.html";

/// The page of a group analysis, not yet written: the group's maps, the tables, and of every run its courses and its z
/// maps of the dual regression, these in steps of 0.2 (see CoarseMap). With many runs not all of their maps fit: those
/// of runs with outlying amplitudes come first, then the others in the order of the study, until they take up
/// `mostBytes` of the page; the page says which are left out. Throws Failure.
ReportPage makeGroupPage(const std::filesystem::path& templateFile, const GroupStudy& study, const GroupMaps& maps,
                         const GroupTables& tables, std::size_t mostBytes = std::size_t{64} << 20);

} // namespace zn::headless
