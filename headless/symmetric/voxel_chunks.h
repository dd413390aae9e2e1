#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/symmetric/whitened_voxels.h"

#include <functional>

namespace zn::headless {

/// Voxels whose rows of whitened data and of projections stay in the second-level cache together.
constexpr int kBlockVoxels = 512;

/// Consecutive voxels that one thread works through, block by block.
struct VoxelChunk {
    int number;
    int first;
    int count;
};

/// A division of all voxels that depends only on the size of the data, not on the number of threads. There are at most
/// 64 chunks, and a result of n x n numbers for each takes at most an eighth of the memory of the data.
class VoxelChunks {
public:
    explicit VoxelChunks(const WhitenedVoxels& data);

    int count() const { return count_; }
    VoxelChunk operator[](int number) const;

    /// Calls body(chunk, worker) once for every chunk, on any thread; calls with the same worker, from 0, never
    /// overlap. The body must not throw.
    void share(WorkerThreads& team, const std::function<void(const VoxelChunk&, int)>& body) const;

private:
    int voxels_;
    int size_;
    int count_;
};

/// Calls body(first, count) for the blocks of a chunk, in order.
template <class Body> void forEachBlock(const VoxelChunk& chunk, Body body) {
    for (int done = 0; done < chunk.count; done += kBlockVoxels) {
        const int left = chunk.count - done;
        body(chunk.first + done, left < kBlockVoxels ? left : kBlockVoxels);
    }
}

} // namespace zn::headless
