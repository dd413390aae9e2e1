#include "headless/dimension/parallel_analysis.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr double kMargin = 1.1;
constexpr double kMarginWithoutEdge = 1.5;

// The number of eigenvalues above margin * edge; more than `most` if it does not settle below.
int countAbove(const ResidualNoise& noise, double margin, int most) {
    const auto& values = noise.eigenvalues();
    int count = 1;
    while (true) {
        const double threshold = margin * noise.after(count).edge;
        const auto end = values.begin() + noise.dimensions();
        const auto above =
            static_cast<int>(std::count_if(values.begin(), end, [&](double v) { return v > threshold; }));
        if (above <= count || above > most) return std::max(above, count);
        count = above;
    }
}

} // namespace

ParallelAnalysis parallelAnalysis(const ResidualNoise& noise) {
    constexpr int kFewest = 6; // dimensions; with fewer there is no noise to speak of
    ParallelAnalysis result;
    if (noise.dimensions() < kFewest) return result;
    const int most = noise.dimensions() / 3;
    result.count = countAbove(noise, kMargin, most);
    if (result.count > most) {
        result.hasEdge = false;
        result.count = std::min(most, countAbove(noise, kMarginWithoutEdge, most));
    }
    result.noise = noise.after(result.count);
    return result;
}

} // namespace zn::headless
