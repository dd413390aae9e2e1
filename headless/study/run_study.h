#pragma once

#include "headless/failure/failure.h"
#include "headless/result/unfinished_work.h"
#include "headless/study/plan_study.h"

namespace zn::headless {

/// `znica bids ... participant`: carries out the runs of the plan that are not done, as many at once as processors and
/// memory allow, each in a process of its own, and records every one. The last line printed sums up:
///
///   12 of 14 runs done, 1 with fewer components, 1 without result: sub-03_task-rest
///
/// Returns kDone when all have a result with all components, kGaveUp when all have a result, else the smallest exit
/// status of those without one (128 + signal for one that a signal ended). An interruption ends the runs under way;
/// finished results stay. Throws Failure when the study cannot begin.
ExitStatus runStudy(const StudyPlan& plan, const StudyOptions& options, UnfinishedWork& unfinished);

} // namespace zn::headless
