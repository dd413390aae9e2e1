#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/prepare/masked_series.h"

#include <array>

namespace zn::headless {

/// Smooths every volume in place with a Gaussian within the mask. Voxels outside count neither in the sum nor in the
/// weights (normalised convolution: the smoothed image, 0 outside, over the smoothed mask), so that the edges do not
/// darken. An axis with a single voxel is not smoothed.
///
///   sigma   standard deviation along x, y, z in voxels, at least 0; see gaussianKernel()
///
/// All values inside must be finite; the others are not read, and undefined afterwards. Only those near the mask are
/// written. Bit-identical for any number of threads. Besides the series, this needs memory for one line of voxels per
/// thread and for at most ten bytes per voxel of the grid.
void smoothSeries(const MaskedSeries& series, const std::array<double, 3>& sigma, WorkerThreads& threads);

} // namespace zn::headless
