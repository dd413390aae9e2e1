#pragma once

#include "headless/blas/worker_threads.h"

#include <algorithm>
#include <cstdint>

namespace zn::headless {

/// Voxels are summed in units of this size, and the units in their order, so that sums do not depend on the number of
/// threads.
inline constexpr std::int64_t kUnitVoxels = 4096;

inline int unitsIn(std::int64_t voxels) {
    return static_cast<int>((voxels + kUnitVoxels - 1) / kUnitVoxels);
}

/// Calls use(worker, unit, first, end) for every unit, on several threads; `worker` is below the number of threads and
/// never the same in two calls at a time, so it can choose scratch memory. `use` must not throw.
template <class Use> void forEachUnit(WorkerThreads& threads, std::int64_t voxels, const Use& use) {
    const int workers = threads.threads();
    threads.run(workers, [&](int worker) {
        for (int unit = worker; unit < unitsIn(voxels); unit += workers) {
            use(worker, unit, unit * kUnitVoxels, std::min(voxels, (unit + 1) * kUnitVoxels));
        }
    });
}

} // namespace zn::headless
