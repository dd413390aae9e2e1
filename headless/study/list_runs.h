#pragma once

#include "headless/study/plan_study.h"

namespace zn::headless {

/// Prints the runs as a table separated by tabs, one line each after the header, without starting any:
///
///   run  repetition_time  volumes  memory_mib  dummy_scans  mask  confounds  events  image  problem
///
/// memory_mib is the peak predicted; a run that cannot be analysed has n/a there and a sentence as its problem. What is
/// missing is n/a.
void listRuns(const StudyPlan& plan, const StudyOptions& options);

} // namespace zn::headless
