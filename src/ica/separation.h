#pragma once

#include "ica/whitening.h"
#include "numeric/array_owners.h"

namespace zn {

/// Unmixing of the components found, carried back into volume space. T volumes, n the reduced dimension.
struct Separation {
    ZeroedBlock mixing;     ///< M, T x n: column c is DW w of component c
    ZeroedBlock separating; ///< Q, n x T: row c is wt Wh of component c
    int found = 0;          ///< K, components that converged; columns and rows from K on stay 0
};

/// Zero-filled matrices, no component yet. Throws std::bad_alloc.
Separation emptySeparation(int volumes, int dimension);

/// Appends the component with the unit vector w: its column of M and its row of Q.
///
///   w   [0..n-1]
void addComponent(const double* w, int dimension, const Whitening& whitened, int volumes, Separation& separation);

} // namespace zn
