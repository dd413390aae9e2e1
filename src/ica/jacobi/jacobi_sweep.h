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
///   dropNegligible   set elements to zero that vanish beside both diagonal elements, instead of rotating them away
///   rotations        out: the rotations done, for the eigenvectors
///
/// Every element goes through the same operations in the same order as if each rotation were applied to the whole
/// matrix at once, so the results have the same bits. Only the order among elements differs: within the pass of one p
/// a rotation is needed at once just in the rows p and q right of q. What it does to a row j between p and q is done
/// when row j's turn comes in the next pass, for several rows side by side; what it does to rows above p is not looked
/// at before the next sweep and is done for all passes together.
void jacobiSweep(const JacobiState& state, double threshold, bool dropNegligible, SweepRotations& rotations);

} // namespace zn
