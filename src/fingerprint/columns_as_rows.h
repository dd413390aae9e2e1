#pragma once

#include "numeric/array_owners.h"

namespace zn {

/// Copy of a matrix whose rows are the columns of `source`: one contiguous series a row.
///
///   source  [0..rows-1][0..columns-1]  in
///
/// Returns [0..columns-1][0..rows-1].
OffsetMatrix<float> columnsAsRows(const float* const* source, int rows, int columns);

} // namespace zn
