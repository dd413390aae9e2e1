#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/symmetric/whitened_voxels.h"

#include <random>
#include <vector>

namespace zn::headless {

/// Voxels on which starts are tried: an eighth, but at least 200 per component. All of them where that is more than
/// half, as a part would save little.
int partSize(const WhitenedVoxels& data);

/// The data of `count` voxels chosen at random, in their order.
class VoxelPart {
public:
    VoxelPart(WorkerThreads& team, const WhitenedVoxels& data, int count, std::mt19937& random);

    WhitenedVoxels data() const { return {values_.data(), dimension_, count_}; }

private:
    int dimension_;
    int count_;
    std::vector<double> values_;
};

} // namespace zn::headless
