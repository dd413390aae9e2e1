#pragma once

#include "headless/group/steps/group_maps.h"
#include "headless/group/steps/group_study.h"

#include <string>

namespace zn::headless {

/// The record of the step that gathers the runs' tables, in the study's folder.
inline constexpr char kCorrelationsRecord[] = "desc-groupICA_netmats.json";

/// What it is recognised by.
std::string groupTablesBasis(const GroupStudy& study, const GroupMaps& maps);

} // namespace zn::headless
