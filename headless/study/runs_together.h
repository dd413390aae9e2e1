#pragma once

#include "headless/group/steps/group_options.h"
#include "headless/study/plan_study.h"
#include "headless/study/study_folder.h"

#include <vector>

namespace zn::headless {

/// The runs of a study for a group analysis, whose files about a single run lie beside the other results of that run.
/// Throws Failure (kInput) when one of them cannot be analysed.
std::vector<ListedRun> runsTogether(const StudyPlan& plan, const StudyFolder& study);

/// Prints the same runs as a table separated by tabs, which `znica group plan --runs` reads, too:
///
///   name  repetition_time  volumes  mask  image  results  problem
///
/// What is missing is n/a; a run that cannot be analysed has a sentence as its problem.
void listRunsTogether(const StudyPlan& plan, const StudyOptions& options);

} // namespace zn::headless
