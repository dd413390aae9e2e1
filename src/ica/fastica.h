#pragma once

#include "ica/contrast/nonlinearity.h"
#include "ica/separation.h"
#include "ica/whitening.h"

namespace zn {

/// How the components are searched for.
struct FastIcaSettings {
    Nonlinearity nonlinearity;
    float epsilon;      ///< an iteration has converged when the unit vector moves less than this
    int iterationLimit; ///< an attempt at one component is given up after this many iterations
    int components;     ///< number to search for; the reduced dimension n
};

/// Finds the components one after another (deflation), each orthogonal to those before.
///
/// An attempt that reaches the iteration limit is repeated from a new random vector; the sixth failed attempt of the
/// whole run ends the search and keeps what was found. Seeds the standard pseudo-random generator from the clock.
/// Logs a line for each attempt. Throws std::bad_alloc.
///
/// Method: Hyvarinen (1999), Fast and robust fixed-point algorithms for independent component analysis, IEEE Trans.
/// Neural Networks 10(3), 626-634.
Separation separate(const Whitening& whitened, int voxels, int volumes, const FastIcaSettings& settings);

} // namespace zn
