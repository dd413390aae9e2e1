#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/prepare/masked_series.h"

#include <array>

namespace zn::headless {

/// The smoothness of the noise along x, y, z: the full width at half maximum, in voxels, of the Gaussian that would
/// give white noise the same correlation between neighbours; 0 where neighbours are not positively correlated or there
/// are none.
///
/// From the differences r of consecutive volumes, in which signals that change slowly and the mean image are small:
/// with rho = 1 - sum (r_v - r_u)^2 / sum (r_v^2 + r_u^2) over all pairs of neighbours v, u inside the mask and all
/// volumes,
///
///     FWHM = sqrt(-2 ln 2 / ln rho)
///
/// Bit-identical for any number of threads. Method: Forman et al. (1995), Magnetic Resonance in Medicine 33, 636-647.
std::array<double, 3> estimateSmoothness(const MaskedSeries& series, WorkerThreads& threads);

} // namespace zn::headless
