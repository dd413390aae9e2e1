#pragma once

#include "headless/symmetric/fixed_point_search.h"
#include "headless/symmetric/separate_symmetrically.h"

#include <random>
#include <vector>

namespace zn::headless {

/// Where each start has arrived, and what it is worth.
struct TriedStarts {
    std::vector<SearchEnd> ends;
    std::vector<StartFacts> facts; ///< the same indices; agreement is left to noteAgreement()

    bool anyConverged() const;
    /// Indices of the starts: converged ones first, each group in descending order of negentropy.
    std::vector<int> ranking() const;
};

/// Follows `settings.starts` random starts on the given voxels.
TriedStarts tryStarts(WorkerThreads& team, const WhitenedVoxels& data, const SymmetricSettings& settings,
                      const SearchLimits& limits, std::mt19937& random,
                      const std::function<void(const SymmetricProgress&)>& onProgress);

/// Sets how far each start agrees with the chosen one.
void noteAgreement(TriedStarts& tried, int chosen);

} // namespace zn::headless
