#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// Writes settings, versions, eigenvalues, the components with their iterations and parameters, and the time and memory
/// used by a run as JSON. NaN and infinities become null. Throws Failure (kOther).
void writeDecomposition(const Run& run);

/// Writes a summary of how the run ended: {"status": "done" or "gave up", "exit_status": 0 or 4, "partial": whether
/// components are missing, ...}.
void writeStatus(const Run& run);

} // namespace zn::headless
