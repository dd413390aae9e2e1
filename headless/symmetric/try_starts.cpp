#include "headless/symmetric/try_starts.h"

#include "headless/symmetric/component_moments.h"
#include "headless/symmetric/start_matrix.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

// Mean over the rows of a of the largest |a b| with any row of b.
double agreement(const UnmixingMatrix& a, const UnmixingMatrix& b) {
    const int n = a.dimension();
    double sum = 0.0;
    for (int k = 0; k < n; ++k) {
        double largest = 0.0;
        for (int j = 0; j < n; ++j) {
            largest = std::max(largest, std::fabs(std::inner_product(a.row(k), a.row(k + 1), b.row(j), 0.0)));
        }
        sum += largest;
    }
    return sum / n;
}

} // namespace

bool TriedStarts::anyConverged() const {
    return std::any_of(facts.begin(), facts.end(), [](const StartFacts& start) { return start.converged; });
}

std::vector<int> TriedStarts::ranking() const {
    std::vector<int> order(facts.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [this](int a, int b) {
        const StartFacts& first = facts[static_cast<std::size_t>(a)];
        const StartFacts& second = facts[static_cast<std::size_t>(b)];
        if (first.converged != second.converged) return first.converged;
        return first.negentropy > second.negentropy;
    });
    return order;
}

TriedStarts tryStarts(WorkerThreads& team, const WhitenedVoxels& data, const SymmetricSettings& settings,
                      const SearchLimits& limits, std::mt19937& random,
                      const std::function<void(const SymmetricProgress&)>& onProgress) {
    FixedPointPass pass(team, settings.nonlinearity, data);
    TriedStarts tried;
    for (int start = 0; start < settings.starts; ++start) {
        int iterations = 0;
        tried.ends.push_back(searchFrom(startMatrix(data.dimension, random), pass, limits, [&] {
            onProgress({start, ++iterations});
        }));
        const SearchEnd& end = tried.ends.back();
        // NaN has no place in an order.
        const double negentropy = componentMoments(team, data, end.w).totalNegentropy();
        tried.facts.push_back({end.iterations, end.converged(), std::isfinite(negentropy) ? negentropy : 0.0, 1.0});
    }
    return tried;
}

void noteAgreement(TriedStarts& tried, int chosen) {
    const UnmixingMatrix& best = tried.ends[static_cast<std::size_t>(chosen)].w;
    for (std::size_t i = 0; i < tried.ends.size(); ++i) tried.facts[i].agreement = agreement(best, tried.ends[i].w);
}

} // namespace zn::headless
