#include "host/run_exit.h"

#include "host/host_api.h"

namespace zn {

void BusyCursor::show() {
    host().znShowBusyCursor();
    shown_ = true;
}

void BusyCursor::stop() {
    host().znStopBusyCursor();
}

void BusyCursor::stopIfShown() {
    if (shown_) stop();
}

Stop stopWithMessage(BusyCursor& cursor, const char* boxText, const char* logText, bool result) {
    cursor.stopIfShown();
    host().znMessageBox(boxText);
    host().znLogText(logText);
    return Stop{result};
}

Stop stopWithMemoryFull(BusyCursor& cursor) {
    // The blank before the angle bracket is part of the text.
    return stopWithMessage(cursor, "Working memory full. Exiting plugin.",
                           "// Plugin > Working memory full. Exiting plugin.", true);
}

} // namespace zn
