#pragma once

#include <optional>

namespace zn {

/// An early end of a run. Whoever returns one has already told the user why.
struct Stop {
    bool result; ///< what `execute` returns: false for unusable input, true otherwise; not a plain success flag
};

/// Empty: the run goes on.
using MaybeStop = std::optional<Stop>;

/// The host's busy cursor. Once it has been shown in a run, every exit stops it before reporting anything.
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

/// Ends a run that is out of memory: busy cursor off, message box, log line; the result is true.
Stop stopWithMemoryFull(BusyCursor& cursor);

} // namespace zn
