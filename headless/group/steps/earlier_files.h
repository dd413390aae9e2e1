#pragma once

#include "headless/group/steps/group_maps.h"
#include "headless/group/steps/group_study.h"

#include <filesystem>
#include <vector>

namespace zn::headless {

// What the steps of a study made on another basis than today's. Only files that a step itself names are among it, the
// records first, so that nothing counts as done that is being removed.

/// What later steps made of the plan in a study's folder: the group's maps and tables, the page, the plug-in's result,
/// and the dual regressions of its runs. Nothing without a plan.
std::vector<std::filesystem::path> filesOfEarlierPlan(const std::filesystem::path& folder);

/// What later steps made of other maps than these: the tables, the page, and the dual regressions.
std::vector<std::filesystem::path> filesOfOtherMaps(const GroupStudy& study, const GroupMaps& maps);

} // namespace zn::headless
