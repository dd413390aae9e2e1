#pragma once

namespace zn {

/// target[j][i] = source[i][j] for i in 0..rows-1 and j in 0..columns-1; nothing when rows < 1.
///
///   source   [0..rows-1][0..columns-1]  in
///   target   [0..columns-1][0..rows-1]  out; does not overlap the source
void transposeMatrix(const float* const* source, float* const* target, int rows, int columns);

} // namespace zn
