#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/denoise/analysed_courses.h"

namespace zn::headless {

/// The kind of every voxel, [voxel].
///
///   mask   one byte per voxel of the grid; nonzero: inside
std::vector<VoxelKind> voxelKinds(const AnalysedCourses& courses, const std::vector<unsigned char>& mask,
                                  WorkerThreads& threads);

} // namespace zn::headless
