#pragma once

#include "headless/design/design_matrix.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Whether one of the first lines begins with "/NumWaves" or "/Matrix".
bool isFeatMatrix(const std::vector<std::string>& lines);

/// Parses the design.mat of FEAT:
///
///       /NumWaves  2                    predictors
///       /NumPoints 3                    volumes
///       /PPheights 1.0 1.2              ignored, as are all other keys
///
///       /Matrix
///       0.0e+00  1.0e+00                one row per volume
///       5.0e-01  0.0e+00
///       1.0e+00  1.0e+00
///
/// The file has no names; the predictors are called EV1, EV2, ... as in FEAT. Throws Failure (kInput); its text names
/// `file`.
DesignMatrix parseFeatMatrix(const std::vector<std::string>& lines, const std::string& file);

} // namespace zn::headless
