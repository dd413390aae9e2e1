#include "headless/study/outliers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zn::headless {

namespace {

// Of an even number of values the mean of the two in the middle.
double medianOf(std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2.0;
}

} // namespace

bool Spread::excludes(double value) const {
    constexpr double kMost = 3.0;
    return std::fabs(value - median) > kMost * deviation;
}

Spread spreadOf(std::vector<double> values) {
    if (values.empty()) return {0.0, std::numeric_limits<double>::infinity()};
    constexpr double kNormal = 1.4826;
    Spread spread;
    spread.median = medianOf(values);
    for (double& value : values) value = std::fabs(value - spread.median);
    spread.deviation = kNormal * medianOf(values);
    return spread;
}

} // namespace zn::headless
