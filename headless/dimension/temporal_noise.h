#pragma once

#include <vector>

namespace zn::headless {

/// The autocorrelation of an autoregressive process from its first values: element m is that at a lag of m volumes, for
/// m = 0 ... length - 1.
///
///   autocovariance   at the lags 0 ... p, the first one above 0
///
/// The process of order p has exactly these autocovariances (Yule and Walker); later ones follow from its recursion. If
/// no stationary process of that order has them, the order is reduced to the largest possible.
///
/// Method: Durbin's recursion, as in Brockwell and Davis (1991), Time Series: Theory and Methods, section 5.2.
std::vector<double> autoregressiveCorrelation(const std::vector<double>& autocovariance, int length);

} // namespace zn::headless
