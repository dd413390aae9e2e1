#include "headless/denoise/regressors.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace zn::headless {

UnitCourse unitCourse(const std::vector<double>& values) {
    constexpr double kRounding = 1e-12; // of the largest value: a course that varies less is constant
    UnitCourse course = values;
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    double squares = 0.0;
    double largest = 0.0;
    for (double& value : course) {
        largest = std::max(largest, std::abs(value));
        value -= mean;
        squares += value * value;
    }
    const double length = std::sqrt(squares);
    const double scale = length > kRounding * largest ? 1.0 / length : 0.0;
    for (double& value : course) value *= scale;
    return course;
}

} // namespace zn::headless
