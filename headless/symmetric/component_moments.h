#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/symmetric/unmixing_matrix.h"
#include "headless/symmetric/whitened_voxels.h"

#include <vector>

namespace zn::headless {

/// What the distribution of each component over the voxels looks like: [component].
struct ComponentMoments {
    std::vector<double> thirdMoment; ///< E{y^3}
    std::vector<double> negentropy;  ///< (E{ln cosh y} - E{ln cosh v})^2, v standard normal

    double totalNegentropy() const;
};

/// Negentropy in the approximation of Hyvarinen (1998), Advances in Neural Information Processing Systems 10, 273-279,
/// up to a constant factor. One pass over the data, with the same bits for any number of threads.
///
///   w   rows of unit length
ComponentMoments componentMoments(WorkerThreads& team, const WhitenedVoxels& data, const UnmixingMatrix& w);

} // namespace zn::headless
