#include "headless/symmetric/separate_symmetrically.h"

#include "headless/symmetric/component_moments.h"
#include "headless/symmetric/order_and_sign.h"
#include "headless/symmetric/try_starts.h"
#include "headless/symmetric/voxel_part.h"

#include <algorithm>

namespace zn::headless {

namespace {

using OnProgress = std::function<void(const SymmetricProgress&)>;

constexpr double kStartEpsilon = 0.01; // below the sampling error of a part

TriedStarts triedStarts(WorkerThreads& team, const WhitenedVoxels& data, const SymmetricSettings& settings,
                        std::mt19937& random, const OnProgress& onProgress, int& voxels) {
    const SearchLimits limits{std::max(settings.epsilon, kStartEpsilon), settings.iterationLimit};
    voxels = partSize(data);
    if (voxels < data.voxels) {
        const VoxelPart part(team, data, voxels, random);
        TriedStarts tried = tryStarts(team, part.data(), settings, limits, random, onProgress);
        if (tried.anyConverged()) return tried;
        voxels = data.voxels;
    }
    return tryStarts(team, data, settings, limits, random, onProgress);
}

// The first of the ranked starts that converges on all voxels, otherwise the one with the most components settled.
SearchEnd finish(WorkerThreads& team, const WhitenedVoxels& data, const SymmetricSettings& settings,
                 const TriedStarts& tried, const OnProgress& onProgress, int& chosen) {
    FixedPointPass pass(team, settings.nonlinearity, data);
    SearchEnd best;
    for (const int start : tried.ranking()) {
        int iterations = 0;
        SearchEnd end = searchFrom(tried.ends[static_cast<std::size_t>(start)].w, pass,
                                   {settings.epsilon, settings.iterationLimit}, [&] {
                                       onProgress({-1, ++iterations});
                                   });
        if (best.w.dimension() > 0 && end.settledCount() <= best.settledCount()) continue;
        best = std::move(end);
        chosen = start;
        if (best.converged()) break;
    }
    return best;
}

} // namespace

SymmetricResult separateSymmetrically(WorkerThreads& team, const WhitenedVoxels& data, const Dewhitening& dewhitening,
                                      const SymmetricSettings& settings, const OnProgress& onProgress) {
    std::mt19937 random(settings.seed);
    SymmetricResult result;
    SymmetricFacts& facts = result.facts;
    TriedStarts tried = triedStarts(team, data, settings, random, onProgress, facts.startVoxels);
    const SearchEnd end = finish(team, data, settings, tried, onProgress, facts.chosen);
    noteAgreement(tried, facts.chosen);
    facts.starts = std::move(tried.facts);
    facts.iterations = end.iterations;

    const ComponentMoments moments = componentMoments(team, data, end.w);
    for (std::size_t k = 0; k < end.settled.size(); ++k) {
        if (end.settled[k]) facts.negentropy += moments.negentropy[k];
    }
    result.vectors = orderedAndSigned(end.w, dewhitening, moments.thirdMoment, end.settled);
    return result;
}

} // namespace zn::headless
