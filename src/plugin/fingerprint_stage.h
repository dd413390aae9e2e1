#pragma once

#include "plugin/run.h"

namespace zn {

/// Computes the sixteen parameters of every component and writes "ParamsMatrix.txt". Asks the user for the cluster
/// size and the Z threshold, with the busy cursor off; releases the raw time courses and the VOI templates.
void computeFingerprint(Run& run);

} // namespace zn
