#pragma once

/// What the user reads when the command cannot start a single thread; also needed where only constants may be used.
#define ZN_NO_THREADS "no thread can be started; raise the limits on memory and processes (ulimit -v, ulimit -u)."
