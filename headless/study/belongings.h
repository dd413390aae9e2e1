#pragma once

#include "headless/bids/sidecars.h"
#include "headless/study/candidates.h"
#include "headless/study/planned_run.h"

namespace zn::headless {

/// An image with its sidecars, and with its mask, confounds, events, labels and number of dummy scans as far as the
/// options ask for them. What makes the run impossible becomes its problem.
PlannedRun withBelongings(const Candidate& candidate, const StudyOptions& options, SidecarFolders& sidecars);

/// Adds a sentence for each kind of file that the options ask for and some runs do not have.
void noteMissing(const std::vector<PlannedRun>& runs, const StudyOptions& options, std::vector<std::string>& notes);

} // namespace zn::headless
