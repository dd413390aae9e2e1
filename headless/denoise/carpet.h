#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/denoise/analysed_courses.h"

#include <cstdint>
#include <vector>

namespace zn::headless {

/// Rows of a carpet plot, from top to bottom: voxels of the mask, evenly spaced in the order of their correlation with
/// the global signal (the mean over the mask), the largest first.
///
///   rows   at most so many voxels
///
/// Method: Power (2017), NeuroImage 154, 150-158; the order of Aquino et al. (2020), NeuroImage 212, 116614.
std::vector<std::int64_t> carpetVoxels(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, int rows,
                                       WorkerThreads& threads);

/// How the rows are drawn: the mean and the standard deviation over time of each, which both images share.
struct CarpetScale {
    std::vector<double> mean;
    std::vector<double> sd;
};

CarpetScale carpetScale(const AnalysedCourses& courses, const std::vector<std::int64_t>& voxels);

/// (value - mean) / sd: [row][analysed volume].
std::vector<float> carpetOf(const AnalysedCourses& courses, const std::vector<std::int64_t>& voxels,
                            const CarpetScale& scale);

} // namespace zn::headless
