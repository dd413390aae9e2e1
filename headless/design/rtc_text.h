#pragma once

#include "headless/design/design_matrix.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Parses the RTC text format, the one in which the plug-in writes its own time courses:
///
///       FileVersion:     2
///       Type:            DesignMatrix
///       NrOfPredictors:  2
///       NrOfDataPoints:  3
///                                         an empty line
///       "Face" "House"                    names in double quotes
///           0     1                       one row a volume, one number a predictor
///         0.5  0.25
///           1     0
///
/// Other "Name: value" lines above the empty line are passed over. `file` is for the texts of Failure (kInput).
DesignMatrix parseRtc(const std::vector<std::string>& lines, const std::string& file);

} // namespace zn::headless
