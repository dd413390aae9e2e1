#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/prepare/masked_series.h"

#include <vector>

namespace zn::headless {

/// The number of discrete cosines with a period above the cut-off: cosine k = 1, 2, ... has the period
/// 2 T seconds per volume / k.
///
///   cutOff   seconds, above 0
int cosinesBelow(double cutOff, int volumes, double secondsPerVolume);

/// The first discrete cosines cos(pi k (t + 1/2) / T), k = 1 ... count, of unit length each: [count][volumes]. They are
/// orthogonal to each other and to a constant.
std::vector<double> cosines(int count, int volumes);

/// Removes the projections onto the first cosines cos(pi k (t + 1/2) / T), k = 1 ... count, from the courses inside the
/// mask, in place. They are orthogonal to a constant, so that the mean of every voxel stays. Bit-identical for any
/// number of threads.
///
/// Method: the discrete cosine set of Frackowiak et al. (eds., 2004), Human Brain Function, chapter 41.
void removeCosines(const MaskedSeries& series, int count, WorkerThreads& threads);

} // namespace zn::headless
