#pragma once

#include <vector>

namespace zn::headless {

/// Which values lie apart from the others: more than 3.5 robust standard deviations (1.4826 times the median absolute
/// deviation) from the median. None if more than half of the values are the same.
///
/// Method: Iglewicz and Hoaglin (1993), How to Detect and Handle Outliers.
std::vector<bool> outlyingValues(const std::vector<double>& values);

} // namespace zn::headless
