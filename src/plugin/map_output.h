#pragma once

#include "plugin/run.h"

namespace zn {

/// Computes the sixteen parameters of every component and writes "ParamsMatrix.txt".
void computeFingerprint(Run& run);

/// Hands the component maps to the host and has it save them under the dialog's output name.
void outputMaps(Run& run);

} // namespace zn
