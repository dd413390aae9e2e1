#pragma once

#include "headless/host/session.h"
#include "headless/nifti/image_header.h"
#include "headless/run/run_options.h"

namespace zn::headless {

/// Reads the header of the functional image, checks everything about the run that can be known from it, and settles
/// --components max in the options. Throws Failure (kInput).
ImageHeader readFunctionalHeader(RunOptions& options);

/// Puts the range of eigenvalues and the number of components of the options into the dialog.
void setEigenvalueRange(const RunOptions& options, DialogFields& dialog);

/// Makes the session of a run: the dialog's fields and the prompts' answers from the options; mask, regions and design
/// matrix from their files, held against the functional image. Everything but the functional data themselves, which
/// take the time and the memory. Throws Failure (kInput).
Session makeSession(const RunOptions& options, const ImageHeader& functional, double secondsPerVolume);

} // namespace zn::headless
