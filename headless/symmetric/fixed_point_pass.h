#pragma once

#include "headless/symmetric/unmixing_matrix.h"
#include "headless/symmetric/voxel_chunks.h"
#include "ica/contrast/nonlinearity.h"

#include <vector>

namespace zn::headless {

/// The fixed-point update of all components of an unmixing matrix at once, W <- E{g(W z) zt} - diag(E{g'(W z)}) W with
/// means over the voxels; the result is not decorrelated. Hyvarinen (1999), IEEE Trans. Neural Networks 10(3), 626-634.
///
/// The data are read once: a block of voxels goes through the product with W, g, and the product with zt while it is in
/// the cache. The sums of the chunks are added in their order, so that the bits do not depend on the number of threads.
class FixedPointPass {
public:
    /// Allocates the work space; `team` and the data outlive this.
    FixedPointPass(WorkerThreads& team, zn::Nonlinearity nonlinearity, const WhitenedVoxels& data);

    /// w   in: rows of unit length; out: their update
    void update(UnmixingMatrix& w);

private:
    struct Sums {
        std::vector<double> products; ///< n x n, g(y) zt
        std::vector<double> slopes;   ///< n, g'(y)
    };

    void addChunk(const VoxelChunk& chunk, const UnmixingMatrix& w, std::vector<double>& y, Sums& sums) const;

    WorkerThreads& team_;
    zn::Nonlinearity nonlinearity_;
    WhitenedVoxels data_;
    VoxelChunks chunks_;
    std::vector<Sums> sums_;                  // [chunk]
    std::vector<std::vector<double>> blocks_; // [worker], n x kBlockVoxels
};

} // namespace zn::headless
