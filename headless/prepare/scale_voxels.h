#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/prepare/masked_series.h"

namespace zn::headless {

/// Divides the courses inside the mask by their means over the volumes, times 100: per cent of the mean. A voxel whose
/// mean is not positive becomes 0 throughout.
void scaleToPercent(const MaskedSeries& series, WorkerThreads& threads);

/// Removes the mean over the volumes from the courses inside the mask and divides them by their standard deviation
/// (divisor T). A voxel whose standard deviation is below a millionth of its mean, which is the rounding error of
/// single precision, becomes 0 throughout.
void scaleToUnitVariance(const MaskedSeries& series, WorkerThreads& threads);

} // namespace zn::headless
