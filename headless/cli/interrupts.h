#pragma once

namespace zn::headless {

/// From now on an interrupt, a hang-up or a request to terminate ends the process at once, whatever the plug-in is
/// doing, after removing the unfinished result: exit status 128 + signal, so 130 for Ctrl-C. Signals that the caller
/// ignores, as nohup does with hang-ups, stay ignored. A closed pipe ends nothing: it shows as a write that fails.
void watchInterrupts();

} // namespace zn::headless
