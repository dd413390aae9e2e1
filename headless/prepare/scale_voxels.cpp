#include "headless/prepare/scale_voxels.h"

#include "headless/prepare/masked_pieces.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

namespace {

constexpr double kRounding = 1e-6; // of single precision, with a margin

double meanOf(const float* course, int volumes) {
    return std::accumulate(course, course + volumes, 0.0) / volumes;
}

} // namespace

void scaleToPercent(const MaskedSeries& series, WorkerThreads& threads) {
    const int volumes = series.volumes;
    forEachInside(series, threads, [volumes](float* course) {
        const double mean = meanOf(course, volumes);
        const auto [lowest, highest] = std::minmax_element(course, course + volumes);
        const double largest = std::max(std::abs(*lowest), std::abs(*highest));
        const double factor = mean > kRounding * largest ? 100.0 / mean : 0.0;
        for (int t = 0; t < volumes; ++t) course[t] = static_cast<float>(factor * static_cast<double>(course[t]));
    });
}

void scaleToUnitVariance(const MaskedSeries& series, WorkerThreads& threads) {
    const int volumes = series.volumes;
    forEachInside(series, threads, [volumes](float* course) {
        const double mean = meanOf(course, volumes);
        double squares = 0.0;
        for (int t = 0; t < volumes; ++t) {
            const double deviation = static_cast<double>(course[t]) - mean;
            squares += deviation * deviation;
        }
        const double sd = std::sqrt(squares / volumes);
        const double factor = sd > kRounding * std::abs(mean) ? 1.0 / sd : 0.0;
        for (int t = 0; t < volumes; ++t) {
            course[t] = static_cast<float>(factor * (static_cast<double>(course[t]) - mean));
        }
    });
}

} // namespace zn::headless
