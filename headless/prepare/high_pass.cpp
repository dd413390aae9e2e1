#include "headless/prepare/high_pass.h"

#include "headless/prepare/masked_pieces.h"

#include <cmath>
#include <numbers>

namespace zn::headless {

std::vector<double> cosines(int count, int volumes) {
    std::vector<double> rows;
    rows.reserve(static_cast<std::size_t>(count) * static_cast<std::size_t>(volumes));
    for (int k = 1; k <= count; ++k) {
        for (int t = 0; t < volumes; ++t) {
            rows.push_back(std::sqrt(2.0 / volumes) * std::cos(std::numbers::pi * k * (t + 0.5) / volumes));
        }
    }
    return rows;
}

int cosinesBelow(double cutOff, int volumes, double secondsPerVolume) {
    const double periods = 2.0 * volumes * secondsPerVolume / cutOff;
    return static_cast<int>(std::ceil(periods)) - 1; // the cosine at the cut-off itself stays
}

void removeCosines(const MaskedSeries& series, int count, WorkerThreads& threads) {
    const int volumes = series.volumes;
    const std::vector<double> rows = cosines(count, volumes);
    forEachInside(series, threads, [&](float* course) {
        for (int k = 0; k < count; ++k) {
            const double* cosine = rows.data() + std::int64_t{1} * k * volumes;
            double projection = 0.0;
            for (int t = 0; t < volumes; ++t) projection += cosine[t] * static_cast<double>(course[t]);
            for (int t = 0; t < volumes; ++t) {
                course[t] = static_cast<float>(static_cast<double>(course[t]) - projection * cosine[t]);
            }
        }
    });
}

} // namespace zn::headless
