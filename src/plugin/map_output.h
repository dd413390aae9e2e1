#pragma once

#include "plugin/run.h"

namespace zn {

/// Hands the component maps with their parameters to the host and has it save them under the dialog's output name.
void outputMaps(const Run& run);

} // namespace zn
