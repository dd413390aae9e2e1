#pragma once

#include "headless/failure/failure.h"
#include "headless/run/run.h"

namespace zn::headless {

/// Writes the files of a run whose maps are complete: the table of parameters, the record, the mean image and, with a
/// design matrix, its table; then report.html, which without an installed template is left out with a message. Gives
/// the folder its name and prints the summary. Returns kDone, or kGaveUp when components are missing; throws Failure
/// (kOther), and then the wanted folder is as it was.
ExitStatus writeResult(Run& run);

} // namespace zn::headless
