#pragma once

#include <vector>

namespace zn::headless {

/// The middle of some values and how far they typically lie from it.
struct Spread {
    double median = 0.0;
    double deviation =
        0.0; ///< median absolute deviation x 1.4826: the standard deviation of normally distributed values

    /// Whether a value lies more than three deviations from the median: Leys C. et al. (2013), Detecting outliers,
    /// Journal of Experimental Social Psychology 49(4), 764-766. If more than half of the values are equal, every other
    /// value does.
    bool excludes(double value) const;
};

/// NaN is not among the values. Without values nothing is excluded.
Spread spreadOf(std::vector<double> values);

} // namespace zn::headless
