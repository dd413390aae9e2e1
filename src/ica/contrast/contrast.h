#pragma once

#include "ica/contrast/nonlinearity.h"

namespace zn {

/// tanh and exp element by element, in place, within 2 units in the last place of the standard library's functions and
/// with the same bits on every machine.
void tanhInPlace(double* x, int count);
void expInPlace(double* x, int count);

/// ln cosh element by element, in place, within 2e-16 (1 + |x|) and with the same bits on every machine.
void logCoshInPlace(double* x, int count);

/// Replaces the projections y [0..count-1] by g(y) and returns the sum of g'(y): in eight partial sums, which are added
/// in a fixed order. The derivative of the cube, 3 y^2, is not replaced by its expectation.
double applyContrast(Nonlinearity nonlinearity, double* y, int count);

/// The expectations of one fixed-point update, as sums over the voxels: sums[k] of z[k][v] g(y[v]) and slope of
/// g'(y[v]).
///
///   nonlinearity   tanh or gaussian
///   z              [0..dimension-1][0..voxels-1], row-major
///   y              [0..voxels-1]    in: projections; out: g(y)
///   sums           [0..dimension-1] out
///
/// One pass over z and y in blocks that fit the first-level cache. Eight partial sums run side by side over all voxels
/// and are added in a fixed order at the end.
void sumContrast(Nonlinearity nonlinearity, const double* z, int dimension, int voxels, double* y, double* sums,
                 double* slope);

} // namespace zn
