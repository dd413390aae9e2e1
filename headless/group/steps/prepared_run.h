#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/group/steps/group_study.h"

#include <vector>

namespace zn::headless {

/// A run's time courses in the common mask, ready for the group's reduction and for the dual regression.
struct PreparedRun {
    std::vector<float> series; ///< [voxel in the mask][volume]; the means over volumes and over voxels are 0
    int volumes = 0;
    int lost = 0; ///< dimensions over time that the high-pass filter removed
};

/// Reads a run and prepares it as the study says: smoothing within the common mask, high-pass filter, scaling; then
/// the mean of each voxel and that of each volume are removed. Only a few volumes of the entire grid are in memory at
/// any time. Throws Failure (kInput), also when the image has changed since the study was planned.
PreparedRun prepareRun(const GroupStudy& study, const GroupRun& run, WorkerThreads& threads);

} // namespace zn::headless
