#pragma once

#include <optional>

namespace zn {

/// An early end of a run. Whoever returns one has already told the user why.
struct Stop {
    bool result; ///< what `execute` returns: false for unusable input, true otherwise; no plain success flag
};

/// Nothing: the run goes on.
using MaybeStop = std::optional<Stop>;

/// The host's busy cursor. Once it has been shown in a run, every exit stops it before it says anything.
class BusyCursor {
public:
    void show();
    void stop();
    /// For early exits: stops the cursor if this run has shown it.
    void stopIfShown();

private:
    bool shown_ = false;
};

/// Shows the text in a message box and ends the run with `result`; `logText` goes to the log after it.
Stop stopWithMessage(BusyCursor& cursor, const char* boxText, const char* logText, bool result);

/// The end of a run that ran out of memory: cursor, message box, log line; the result is true.
Stop stopWithMemoryFull(BusyCursor& cursor);

} // namespace zn
