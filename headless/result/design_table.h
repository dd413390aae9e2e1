#pragma once

#include "headless/design/design_matrix.h"

#include <filesystem>

namespace zn::headless {

/// Writes the predictors that the time courses were compared with as a tab-separated table: their names, then one row a
/// volume. Tabs and line ends in a name become blanks. Throws Failure (kOther).
void writeDesignTable(const std::filesystem::path& file, const DesignMatrix& design);

} // namespace zn::headless
