#pragma once

#include "headless/group/steps/group_study.h"

#include <cstdint>

namespace zn::headless {

/// The peak memory of preparing the study's longest run (T volumes) with `threads` threads, besides what it is prepared
/// for; in bytes. V voxels in the mask, G in the grid:
///
///   4 V T                 the run's series
///   64 V + 12 G           sixteen volumes on their way; with smoothing 128 G in place of 64 V
std::int64_t preparationBytes(const GroupStudy& study);

/// That of the reduction with m rows, on top: 4 V m for the rows, and per thread the inner products and blocks of 2048
/// voxels: 8 (m + T)^2 + 32768 (m + T).
std::int64_t reductionBytes(const GroupStudy& study, int threads);

/// That of the dual regression with K components, on top: 12 V K for the group's maps and the run's.
std::int64_t dualRegressionBytes(const GroupStudy& study, int components);

/// Throws Failure (kMemory) when less than this is free.
///
///   what   "the reduction"
void requireFreeMemory(const char* what, std::int64_t bytes);

} // namespace zn::headless
