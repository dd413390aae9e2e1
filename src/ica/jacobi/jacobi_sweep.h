#pragma once

#include "ica/jacobi/sweep_rotations.h"

namespace zn {

/// What a sweep works on; all arrays [1..n].
struct JacobiState {
    double** a; ///< [1..n][1..n], used above the diagonal
    int n;
    double* d; ///< diagonal
    double* z; ///< what the sweep has added to it
};

/// One sweep over all planes (p, q), p < q: rotates wherever |a[p][q]| exceeds the threshold, and updates the matrix
/// above the diagonal and the diagonal itself.
///
///   dropNegligible   set elements that are negligible beside both diagonal elements to zero instead of rotating
///   rotations        out: the rotations done, for the eigenvectors
///
/// Every element undergoes the same operations in the same order as if each rotation were applied to the whole matrix
/// immediately, so the results have the same bits. Only the order among elements differs: within the pass of one p a
/// rotation is needed immediately only in the rows p and q, right of column q. A row j between p and q is updated when
/// its turn comes in the next pass, together with several others; rows above p are not read before the next sweep and
/// are updated for all passes together.
void jacobiSweep(const JacobiState& state, double threshold, bool dropNegligible, SweepRotations& rotations);

} // namespace zn
