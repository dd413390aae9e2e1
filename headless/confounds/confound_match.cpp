#include "headless/confounds/confound_match.h"

#include <cmath>

namespace zn::headless {

namespace {

// NaN when one of the two does not vary where both have values.
double correlation(std::span<const float> x, const std::vector<float>& y) {
    double n = 0.0;
    double meanX = 0.0;
    double meanY = 0.0;
    for (std::size_t t = 0; t < y.size(); ++t) {
        if (std::isnan(y[t])) continue;
        ++n;
        meanX += static_cast<double>(x[t]);
        meanY += static_cast<double>(y[t]);
    }
    meanX /= n;
    meanY /= n;
    double xx = 0.0;
    double yy = 0.0;
    double xy = 0.0;
    for (std::size_t t = 0; t < y.size(); ++t) {
        if (std::isnan(y[t])) continue;
        const double dx = static_cast<double>(x[t]) - meanX;
        const double dy = static_cast<double>(y[t]) - meanY;
        xx += dx * dx;
        yy += dy * dy;
        xy += dx * dy;
    }
    return xy / std::sqrt(xx * yy);
}

} // namespace

ConfoundMatch strongestConfound(std::span<const float> course, const Confounds& confounds) {
    ConfoundMatch best;
    for (std::size_t i = 0; i < confounds.values.size(); ++i) {
        const double r = correlation(course, confounds.values[i]);
        if (std::isfinite(r) && (best.confound < 0 || std::fabs(r) > std::fabs(best.r))) {
            best = {static_cast<int>(i), r};
        }
    }
    return best;
}

} // namespace zn::headless
