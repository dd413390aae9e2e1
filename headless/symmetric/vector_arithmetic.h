#pragma once

#include <algorithm>
#include <numeric>
#include <vector>

namespace zn::headless {

/// a - b, of equally many numbers.
inline std::vector<double> difference(const std::vector<double>& a, const std::vector<double>& b) {
    std::vector<double> result(a.size());
    std::transform(a.begin(), a.end(), b.begin(), result.begin(), [](double x, double y) { return x - y; });
    return result;
}

inline double dot(const std::vector<double>& a, const std::vector<double>& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

} // namespace zn::headless
