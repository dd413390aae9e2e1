#include "headless/confounds/confound_match.h"

#include "headless/statistics/correlation.h"

#include <cmath>

namespace zn::headless {

ConfoundMatch strongestConfound(std::span<const float> course, const Confounds& confounds) {
    ConfoundMatch best;
    for (std::size_t i = 0; i < confounds.values.size(); ++i) {
        const std::vector<float>& confound = confounds.values[i];
        const double r = correlation(course, confound, [&](std::size_t t) { return !std::isnan(confound[t]); });
        if (std::isfinite(r) && (best.confound < 0 || std::fabs(r) > std::fabs(best.r))) {
            best = {static_cast<int>(i), r};
        }
    }
    return best;
}

} // namespace zn::headless
