#pragma once

#include "host/run_exit.h"

namespace zn {

/// Ends a run after nrerror(text): a failed allocation is handled as any other lack of memory; every other text is
/// shown to the user and logged, and the result is false.
Stop stopAfterFatalError(BusyCursor& cursor, const char* text);

} // namespace zn
