#pragma once

#include "headless/group/steps/steps.h"

namespace zn::headless {

/// All steps of a group analysis in one process, from the list of runs to the tables; what is up to date already is not
/// repeated. Without runs, the study is continued as it was planned. Returns kDone, or kGaveUp if fewer components were
/// found than requested; throws Failure, in which case the steps that were completed remain.
ExitStatus analyseGroup(const GroupOptions& options, UnfinishedWork& unfinished);

} // namespace zn::headless
