#pragma once

#include "headless/design/design_matrix.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Whether the first line begins with "FileVersion:".
bool isRtc(const std::vector<std::string>& lines);

/// Parses the RTC text format, in which the plug-in also writes its time courses:
///
///       FileVersion:     2
///       Type:            DesignMatrix
///       NrOfPredictors:  2
///       NrOfDataPoints:  3
///                                         an empty line
///       "Face" "House"                    names in double quotes
///           0     1                       one row per volume, one number per predictor
///         0.5  0.25
///           1     0
///
/// Other "Name: value" lines above the empty line are ignored. Throws Failure (kInput); its text names `file`.
DesignMatrix parseRtc(const std::vector<std::string>& lines, const std::string& file);

} // namespace zn::headless
