#pragma once

#include "ica/jacobi/sweep_rotations.h"

namespace zn {

/// Applies the rotations of a whole sweep to the columns of `rows` rows of a matrix: for every pass p from
/// 1 to n - 1 and every rotation of it, to the elements p and q of each row.
///
///   m   [1..rows][1..n]; the rows are independent, so that several are rotated side by side
void rotateRows(double** m, int rows, int n, const SweepRotations& rotations);

/// The same for the part above the diagonal of a square matrix: the passes from j + 1 on apply to row j.
///
///   a   [1..n][1..n]
void rotateRowsAboveDiagonal(double** a, int n, const SweepRotations& rotations);

} // namespace zn
