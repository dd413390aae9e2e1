#include "headless/group/steps/outlying_values.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : 0.5 * (values[half - 1] + values[half]);
}

} // namespace

std::vector<bool> outlyingValues(const std::vector<double>& values) {
    constexpr std::size_t kFewest = 6;
    if (values.size() < kFewest) return std::vector<bool>(values.size());
    constexpr double kDeviations = 3.5;
    constexpr double kOfNormal = 1.4826; // standard deviations per median absolute deviation
    const double middle = median(values);
    std::vector<double> distances;
    distances.reserve(values.size());
    for (const double value : values) distances.push_back(std::fabs(value - middle));
    const double limit = kDeviations * kOfNormal * median(distances);
    std::vector<bool> outlying;
    outlying.reserve(values.size());
    for (const double distance : distances) outlying.push_back(limit > 0.0 && distance > limit);
    return outlying;
}

} // namespace zn::headless
