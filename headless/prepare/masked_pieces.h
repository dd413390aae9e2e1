#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/prepare/masked_series.h"

#include <algorithm>

namespace zn::headless {

/// Calls use(course) for the course of every voxel inside the mask, on several threads. `use` must not throw and must
/// depend on nothing but its voxel.
template <class Use> void forEachInside(const MaskedSeries& series, WorkerThreads& threads, const Use& use) {
    constexpr std::int64_t kVoxels = 4096; // per piece
    const std::int64_t voxels = series.voxels();
    const auto pieces = static_cast<int>((voxels + kVoxels - 1) / kVoxels);
    threads.run(pieces, [&](int piece) {
        const std::int64_t end = std::min(voxels, (piece + 1) * kVoxels);
        for (std::int64_t v = piece * kVoxels; v < end; ++v) {
            if (series.has(v)) use(series.course(v));
        }
    });
}

} // namespace zn::headless
