#include "headless/symmetric/order_and_sign.h"

#include <algorithm>
#include <numeric>

namespace zn::headless {

namespace {

// Of the course, its mean over the volumes removed.
double varianceOverTime(const double* w, int n, const Dewhitening& dewhitening) {
    std::vector<double> course(static_cast<std::size_t>(dewhitening.volumes));
    for (std::size_t t = 0; t < course.size(); ++t) {
        const double* row = dewhitening.values + t * static_cast<std::size_t>(n);
        course[t] = std::inner_product(w, w + n, row, 0.0);
    }
    const double mean = std::accumulate(course.begin(), course.end(), 0.0) / dewhitening.volumes;
    double squares = 0.0;
    for (const double value : course) squares += (value - mean) * (value - mean);
    return squares / dewhitening.volumes;
}

} // namespace

std::vector<std::vector<double>> orderedAndSigned(const UnmixingMatrix& w, const Dewhitening& dewhitening,
                                                  const std::vector<double>& thirdMoments,
                                                  const std::vector<bool>& chosen) {
    const int n = w.dimension();
    std::vector<int> order;
    std::vector<double> explained(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
        explained[static_cast<std::size_t>(k)] = varianceOverTime(w.row(k), n, dewhitening);
        if (chosen[static_cast<std::size_t>(k)]) order.push_back(k);
    }
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return explained[static_cast<std::size_t>(a)] > explained[static_cast<std::size_t>(b)];
    });

    std::vector<std::vector<double>> rows;
    for (const int k : order) {
        rows.emplace_back(w.row(k), w.row(k + 1));
        if (thirdMoments[static_cast<std::size_t>(k)] >= 0.0) continue;
        for (double& value : rows.back()) value = -value;
    }
    return rows;
}

} // namespace zn::headless
