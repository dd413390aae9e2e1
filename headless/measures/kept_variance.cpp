#include "headless/measures/kept_variance.h"

#include <cmath>

namespace zn::headless {

double keptVariancePercent(const TemporalEigenpairs& eigen, int first, int last) {
    const std::size_t volumes = eigen.values.size();
    double all = 0.0;
    double kept = 0.0;
    for (std::size_t i = 0; i < volumes; ++i) {
        double sum = 0.0;
        for (std::size_t t = 0; t < volumes; ++t) sum += eigen.vectors[t * volumes + i];
        const double overTime = eigen.values[i] * (1.0 - sum * sum / static_cast<double>(volumes));
        const int rank = static_cast<int>(i) + 1;
        all += overTime;
        if (rank >= first && rank <= last) kept += overTime;
    }
    return all > 0.0 ? 100.0 * kept / all : NAN;
}

} // namespace zn::headless
