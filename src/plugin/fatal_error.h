#pragma once

#include "host/run_exit.h"

namespace zn {

/// The end of a run after nrerror(text): a failed allocation ends it as any other shortage of memory does, every other
/// text is shown to the user and logged, and the result is false.
Stop stopAfterFatalError(BusyCursor& cursor, const char* text);

} // namespace zn
