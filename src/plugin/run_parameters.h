#pragma once

#include "ica/fastica.h"

namespace zn {

/// The integer and float parameters of the host's ICA dialog, made consistent with the data.
struct RunParameters {
    bool runFastIca;
    FastIcaSettings fastIca; ///< components: always lastEigenvalue - firstEigenvalue + 1
    int firstEigenvalue;     ///< rank of the first eigenvalue kept, from 1; may lie outside 1..volumes
    int lastEigenvalue;      ///< rank of the last one, at least firstEigenvalue and at most `volumes` ranks in all
};

/// Reads the parameters in the dialog's order and adjusts the eigenvalue range and the number of components, with a
/// log line for each adjustment.
///
///   volumes   number of volumes of the VTC
RunParameters readRunParameters(int volumes);

} // namespace zn
