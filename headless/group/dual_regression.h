#pragma once

#include "headless/blas/worker_threads.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zn::headless {

/// The share of the group's components in one run. K components, T volumes, V voxels.
struct DualRegression {
    std::vector<double> amplitudes; ///< [component]: standard deviation of the first regression's course (divisor T)
    std::vector<double> courses;    ///< [component][volume]: these courses with mean 0 and variance 1
    std::vector<float> effect;      ///< [component][voxel]: coefficients of the courses, in units of the data
    std::vector<float> z;           ///< [component][voxel]: the effects' t values as normal deviates
    double explainedPercent = 0.0;  ///< of the run's sum of squares, by all components
    int freedom = 0;                ///< degrees of freedom of the t values: T - 1 - lost - K
};

/// The data and maps of a dual regression.
struct DualRegressionInput {
    const float* series; ///< X, [voxel][volume]: the means over voxels and over volumes removed
    int volumes;
    const float* maps; ///< S, [component][voxel]: mean 0 and variance 1 over the voxels
    int components;
    std::int64_t voxels;
    int lost; ///< dimensions over time that the preparation removed besides the mean
};

/// Regresses the data on the group's maps, which yields a course per component, and then every voxel on all courses,
/// scaled to unit variance, which yields the run's own maps:
///
///   C = (S St)^-1 S X,   c = C / sd(C) per row,   B = (c ct)^-1 c Xt,   t = B / sqrt(rss / freedom * (c ct)^-1_kk)
///
/// Nothing if the maps or the courses are linearly dependent, or without degrees of freedom. Independent of the number
/// of threads.
///
/// Method: Nickerson et al. (2017), Frontiers in Neuroscience 11, 115.
std::optional<DualRegression> regressDually(const DualRegressionInput& input, WorkerThreads& threads);

} // namespace zn::headless
