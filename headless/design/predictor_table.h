#pragma once

#include "headless/design/design_matrix.h"
#include "headless/text/text_table.h"

namespace zn::headless {

/// The columns of a table as predictors: the header has their names, every other row the values of one volume. Throws
/// Failure (kInput) for cells that are not numbers and for a name that is one.
DesignMatrix predictorTable(const TextTable& table);

} // namespace zn::headless
