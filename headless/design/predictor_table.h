#pragma once

#include "headless/design/design_matrix.h"

#include <string>
#include <vector>

namespace zn::headless {

/// Parses a tab-separated table: a header line with the predictors' names, then one row per volume. Empty lines at the
/// end are ignored. Throws Failure (kInput); its text names `file`.
DesignMatrix parsePredictorTable(const std::vector<std::string>& lines, const std::string& file);

} // namespace zn::headless
