#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/group/steps/group_study.h"
#include "headless/group/steps/prepared_run.h"

#include <vector>

namespace zn::headless {

/// The number of components of a prepared run by parallel analysis (component_estimate.h), after its covariances have
/// been projected onto the complement of what the preparation removed: the mean and the filter's cosines. Bit-identical
/// for any number of threads. Throws Failure (kOther) if LAPACK does not converge.
int componentsOfRun(const GroupStudy& study, const PreparedRun& run, WorkerThreads& threads);

/// The median of the runs' estimates, of an even number of runs the mean of the two in the middle, rounded up; at least
/// 2 and at most `most`.
///
///   estimates   at least one
int componentsOfGroup(std::vector<int> estimates, int most);

} // namespace zn::headless
