#pragma once

#include "headless/run/run.h"

namespace zn::headless {

/// Reads everything about a run but the functional data, which take the time and the memory: the image's header, the
/// repetition time, and mask, regions and design matrix from their files, each checked against the image. Settles the
/// number of volumes and, where that decides it, the range of eigenvalues; makes the session with the dialog's fields
/// and the prompts' answers; notes what was found.
///
/// Throws Failure (kInput), also when --force would replace a folder that holds a file the run reads: links count where
/// they lie and where they lead.
void readInputs(Run& run);

} // namespace zn::headless
