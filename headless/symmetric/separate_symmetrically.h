#pragma once

#include "headless/blas/worker_threads.h"
#include "headless/symmetric/order_and_sign.h"
#include "headless/symmetric/unmixing_matrix.h"
#include "headless/symmetric/whitened_voxels.h"
#include "ica/contrast/nonlinearity.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace zn::headless {

struct SymmetricSettings {
    zn::Nonlinearity nonlinearity = zn::Nonlinearity::tanh;
    double epsilon = 1e-4;    ///< as in deflation: no unit vector moves more in the last iteration, up to its sign
    int iterationLimit = 500; ///< of every search; below 0: no limit
    int starts = 1;
    std::uint32_t seed = 0;
};

/// One start, as far as it was followed on a part of the voxels.
struct StartFacts {
    int iterations = 0;
    bool converged = false;
    double negentropy = 0.0; ///< sum over the components, over that part
    double agreement = 1.0; ///< with the chosen start: mean over its components of the largest |w w'| with any of these
};

struct SymmetricFacts {
    int startVoxels = 0; ///< voxels on which the starts were tried; all of them where a part would not do
    std::vector<StartFacts> starts;
    int chosen = 0;          ///< index of the start that led to the result
    int iterations = 0;      ///< on all voxels, from where the chosen start had arrived
    double negentropy = 0.0; ///< of the components found, over all voxels
};

struct SymmetricResult {
    std::vector<std::vector<double>> vectors; ///< [component found][n], orthonormal
    SymmetricFacts facts;
};

/// A search that is under way.
struct SymmetricProgress {
    int start;      ///< from 0; -1: the final search on all voxels
    int iterations; ///< so far, in this search
};

/// FastICA with symmetric decorrelation. The starts are followed on a random part of the voxels until their unit
/// vectors move less than 0.01; the one with the largest negentropy is finished on all voxels, to the tolerance wanted.
/// Where no start converges on the part, all are repeated on all voxels. Where the final search does not converge, the
/// next best start is tried; if none converges, the components that are settled count as found, in the search with the
/// most of them.
///
///   onProgress   called after every iteration
///
/// The components are in descending order of the variance over time that they explain, and their third moment
/// over the voxels is not negative: the larger tail is positive. The same seed gives the same bits for any number of
/// threads. Throws std::bad_alloc.
///
/// Method: Hyvarinen (1999), IEEE Trans. Neural Networks 10(3), 626-634.
SymmetricResult separateSymmetrically(WorkerThreads& team, const WhitenedVoxels& data, const Dewhitening& dewhitening,
                                      const SymmetricSettings& settings,
                                      const std::function<void(const SymmetricProgress&)>& onProgress);

} // namespace zn::headless
