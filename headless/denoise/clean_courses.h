#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/denoise/analysed_courses.h"
#include "headless/denoise/removal.h"

#include <vector>

namespace zn::headless {

/// What the cleaning of an image changed. Sums run over the voxels inside the mask; T analysed volumes, r columns.
struct Cleaning {
    std::vector<double> dvarsBefore; ///< [T]: root mean square over voxels of the change since the previous volume;
    std::vector<double> dvarsAfter;  ///< NaN for the first
    double squaresBefore = 0.0;      ///< sum over voxels and volumes of the squared deviation from the voxel's mean
    double squaresAfter = 0.0;
    std::vector<double> products; ///< [r][r]: sum over voxels of the products of their coefficients
    std::vector<float> mean;      ///< [voxel of the grid], also outside the mask; 0 where nothing was done
    std::vector<float> sdBefore;  ///< divisor T - 1
    std::vector<float> sdAfter;
};

/// Subtracts from every voxel's course what `removal` says, in place, in double precision; constant voxels and those
/// with non-finite values stay as they are. The same result for any number of threads.
///
/// While this runs, the BLAS must use one thread (see MatrixProducts). Cost: 4 T r multiplications and additions per
/// voxel.
Cleaning cleanCourses(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, const Removal& removal,
                      WorkerThreads& threads);

} // namespace zn::headless
