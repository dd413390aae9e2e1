#pragma once

#include "headless/result/unfinished_work.h"

namespace zn::headless {

/// From now on an interrupt, a hang-up or a request to terminate ends the process at once, whatever the plug-in is
/// doing, after removing the unfinished result. The exit status is 128 + signal, so 130 for Ctrl-C. Signals that the
/// caller ignores, as nohup does with hang-ups, stay ignored. A closed pipe does not end the process but becomes a
/// failed write. `unfinished` must live as long as the process.
/// Throws Failure (kMemory) when no thread can be started.
void watchInterrupts(UnfinishedWork& unfinished);

} // namespace zn::headless
