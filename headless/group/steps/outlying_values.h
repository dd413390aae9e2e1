#pragma once

#include <vector>

namespace zn::headless {

/// Which values lie apart from the others: more than 3.5 robust standard deviations (1.4826 times the median absolute
/// deviation) from the median. None if more than half of the values are the same, and none of fewer than six values:
/// the median absolute deviation of so few varies widely. Of normally distributed values the rule excludes 9.6 % among
/// three, 4.2 % among four, 5.3 % among five, and at most 3.4 % among six or more.
///
/// Method: Iglewicz and Hoaglin (1993), How to Detect and Handle Outliers.
std::vector<bool> outlyingValues(const std::vector<double>& values);

} // namespace zn::headless
