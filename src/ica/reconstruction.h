#pragma once

#include "host/run_exit.h"
#include "ica/fastica.h"
#include "numeric/array_owners.h"

namespace zn {

/// Maps and time courses of the components found. K components, T volumes, V voxels.
struct Components {
    int count = 0;                      ///< K
    OffsetMatrix<float> maps;           ///< S [0..K-1][0..V-1], raw projections: no scaling, no sign rule
    OffsetMatrix<float> timeCourses;    ///< A [0..T-1][0..K-1], each column rescaled to 0..1
    OffsetMatrix<float> rawTimeCourses; ///< B [0..K-1][0..T-1], before the rescaling
    OffsetMatrix<float> separatingRows; ///< F [0..K-1][0..T-1]; part of the results, though no stage reads it
};

/// Maps from the full-rank data: Q Xt, one host product for all components, stored in single precision.
///
///   x            V x T, row-major, centred; out: released
///   separation   found >= 1; out: its matrices released
///
/// Throws std::bad_alloc.
Components reconstruct(ZeroedBlock& x, int voxels, int volumes, Separation& separation);

/// Rescales every column of a matrix [0..rows-1][0..columns-1] in place: minus its minimum, over the then largest
/// value, so that it runs from 0 to 1. A constant column becomes NaN (0 / 0).
void scaleColumnsToUnitRange(float* const* matrix, int rows, int columns);

} // namespace zn
