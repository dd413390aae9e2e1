// Loaded into the command in advance: interrupts it while its libraries are being loaded, as Ctrl-C might.
#include <csignal>

#include <unistd.h>

namespace {

[[gnu::constructor]] void interrupt() {
    kill(getpid(), SIGINT); // returns after the signal's handler, if there is one
}

} // namespace
