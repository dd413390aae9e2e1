#include "headless/symmetric/order_and_sign.h"

#include <algorithm>

namespace zn::headless {

std::vector<std::vector<double>> orderedAndSigned(const UnmixingMatrix& w, const double* eigenvalues,
                                                  const std::vector<double>& thirdMoments,
                                                  const std::vector<bool>& chosen) {
    const int n = w.dimension();
    std::vector<int> order;
    std::vector<double> explained(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
        for (int j = 0; j < n; ++j) {
            explained[static_cast<std::size_t>(k)] += eigenvalues[j] * w.row(k)[j] * w.row(k)[j];
        }
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
