#include "headless/dimension/temporal_noise.h"

#include <cmath>

namespace zn::headless {

namespace {

constexpr double kMostPartial = 0.99; // a partial correlation near 1 makes the process drift without bound

} // namespace

std::vector<double> autoregressiveCorrelation(const std::vector<double>& autocovariance, int length) {
    std::vector<double> weights; // of the latest values, latest first
    double error = 1.0;          // variance of the prediction error, as a share of the variance
    const auto correlation = [&](std::size_t lag) { return autocovariance[lag] / autocovariance[0]; };
    for (std::size_t lag = 1; lag < autocovariance.size(); ++lag) {
        double rest = correlation(lag);
        for (std::size_t i = 0; i < weights.size(); ++i) rest -= weights[i] * correlation(lag - 1 - i);
        const double partial = rest / error;
        if (!(std::abs(partial) < kMostPartial)) break;
        const std::vector<double> before = weights;
        for (std::size_t i = 0; i < weights.size(); ++i) weights[i] -= partial * before[before.size() - 1 - i];
        weights.push_back(partial);
        error *= 1.0 - partial * partial;
    }
    std::vector<double> result = {1.0};
    for (std::size_t lag = 1; lag < static_cast<std::size_t>(length); ++lag) {
        double value = lag <= weights.size() ? correlation(lag) : 0.0;
        if (lag > weights.size()) {
            for (std::size_t i = 0; i < weights.size(); ++i) value += weights[i] * result[lag - 1 - i];
        }
        result.push_back(value);
    }
    return result;
}

} // namespace zn::headless
