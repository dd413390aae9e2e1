#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/dimension/residual_squares.h"
#include "headless/nifti/time_series.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// Temporal covariances over the voxels of a mask; every matrix is T x T, complete, row after row.
struct SeriesCovariances {
    int volumes = 0;
    std::int64_t voxels = 0;   ///< inside the mask
    std::vector<double> total; ///< the spatial mean of every volume removed, divided by the number of voxels
    /// Along x, y and z: half the mean of r rt, with r the difference of the courses of two neighbours. Noise has the
    /// same temporal covariance in the differences as in the data, except for a factor; what is smooth in space, such
    /// as a component of many voxels, nearly vanishes. Empty along an axis without neighbours.
    std::array<std::vector<double>, 3> differences;
};

/// The covariances of a series; as the temporal mean of a voxel is kept, the largest eigenvalue of `total` belongs to
/// the mean image. Bit-identical for any number of threads, provided that the BLAS itself uses one (OneBlasThread).
/// Besides the series, this needs memory for at most 20 T x T matrices, a few thousand courses, and 8 bytes per voxel.
///
///   size      voxels of the grid along x, y, z
///   mask      one byte per voxel, nonzero: included; at least one voxel, all of them finite in every volume
///   leading   if any: the covariances of the variance-normalised series. What is left of a voxel's course without the
///             spatial means and without these directions is its noise; s_v is the square root of its sum of squares
///             and s^2 the mean of s_v^2. Every course is multiplied by s / s_v, at most by 10.
///
/// For the differences every voxel counts along one axis only, in turn.
SeriesCovariances seriesCovariances(const TimeSeries& series, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading = {});

/// The same for courses of the voxels in the mask alone, in the order of the grid: [voxel in the mask][volume].
SeriesCovariances seriesCovariances(const std::vector<float>& courses, int volumes, const std::array<int, 3>& size,
                                    const std::vector<unsigned char>& mask, WorkerThreads& threads,
                                    const Directions& leading = {});

} // namespace zn::headless
