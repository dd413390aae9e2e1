#pragma once

namespace zn {

/// Contrast function of the fixed-point iteration.
enum class Nonlinearity { cube, gaussian, tanh };

/// The integer and float parameters of the host's ICA dialog, made consistent with the data.
struct RunParameters {
    bool runFastIca;
    Nonlinearity nonlinearity;
    float epsilon;       ///< an iteration has converged when the unit vector moves less than this
    int iterationLimit;  ///< an attempt at one component is given up after this many iterations
    int firstEigenvalue; ///< rank of the first eigenvalue kept, from 1; may lie outside 1..volumes
    int lastEigenvalue;  ///< rank of the last one, at least firstEigenvalue and at most `volumes` ranks in all
    int components;      ///< always lastEigenvalue - firstEigenvalue + 1
};

/// Reads the parameters in the dialog's order and adjusts the eigenvalue range and the number of components, with a
/// log line for each adjustment.
///
///   volumes   number of volumes of the VTC
RunParameters readRunParameters(int volumes);

} // namespace zn
