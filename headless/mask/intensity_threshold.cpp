#include "headless/mask/intensity_threshold.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

constexpr double kBright = 0.98;
constexpr double kNegative = 0.1;

double medianAbove(const std::vector<float>& sorted, double threshold) {
    const auto first = std::lower_bound(sorted.begin(), sorted.end(), static_cast<float>(threshold));
    return static_cast<double>(*(first + (sorted.end() - first) / 2));
}

double halfRootMeanSquare(const std::vector<float>& sorted) {
    const auto bright =
        static_cast<double>(sorted[static_cast<std::size_t>(kBright * static_cast<double>(sorted.size() - 1))]);
    double squares = 0.0;
    for (const float value : sorted) {
        const double cut = std::min(static_cast<double>(value), bright);
        squares += cut * cut;
    }
    return 0.5 * std::sqrt(squares / static_cast<double>(sorted.size()));
}

} // namespace

std::optional<float> intensityThreshold(const std::vector<float>& values) {
    std::vector<float> positive;
    std::size_t negative = 0;
    for (const float value : values) {
        if (!std::isfinite(value)) continue;
        if (value > 0.0f) positive.push_back(value);
        if (value < 0.0f) ++negative;
    }
    const auto others = static_cast<double>(negative + positive.size());
    if (positive.empty() || static_cast<double>(negative) > kNegative * others) return std::nullopt;
    std::sort(positive.begin(), positive.end());

    double threshold = halfRootMeanSquare(positive);
    for (int step = 0; step < 100; ++step) { // converges within a few; the limit only guards against a cycle
        const double next = 0.5 * medianAbove(positive, threshold);
        if (next == threshold) break;
        threshold = next;
    }
    return static_cast<float>(threshold);
}

} // namespace zn::headless
