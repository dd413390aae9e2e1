#pragma once

#include "headless/study/overview_runs.h"

#include <string>
#include <vector>

namespace zn::headless {

/// The text of runs.tsv: one row per run.
///
///   run  participant_id  session  task  status  exit_status  [measures]  outliers  notes  message
///
/// `outliers` lists the columns in which the run lies apart from the others; what is missing is n/a.
std::string runsTable(const std::vector<OverviewRun>& runs);

/// The text of runs.json, which describes the columns.
std::string runsDescription();

} // namespace zn::headless
