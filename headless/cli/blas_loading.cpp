// OpenBLAS starts its threads when it is loaded, before main. Where it cannot, it says so and raises SIGINT, which
// would look like Ctrl-C, or do nothing in a script's background job, after which the BLAS waits for ever.
#include "headless/cli/no_threads.h"
#include "headless/failure/failure.h"

#include <csignal>

#include <unistd.h>

namespace {

struct sigaction before {};

// SIGINT while loading. Only what a signal handler may do.
void endLoading(int signal, siginfo_t* info, void*) {
    const bool ownDoing = info->si_code == SI_TKILL && info->si_pid == getpid();
    if (!ownDoing && before.sa_handler == SIG_IGN) return; // stays ignored
    if (!ownDoing) _exit(128 + signal);
    constexpr char kText[] = "znica: " ZN_NO_THREADS "\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kText, sizeof kText - 1);
    _exit(static_cast<int>(zn::headless::ExitStatus::kMemory));
}

void beforeLibraries() {
    sigaction(SIGINT, nullptr, &before); // known before the handler can be called
    struct sigaction action {};
    action.sa_sigaction = endLoading;
    action.sa_flags = SA_SIGINFO | SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
}

// Runs before the constructors of all libraries.
[[gnu::section(".preinit_array"), gnu::used]] void (*const kBeforeLibraries)() = beforeLibraries;

// Runs after them.
[[gnu::constructor]] void afterLibraries() {
    sigaction(SIGINT, &before, nullptr);
}

} // namespace
