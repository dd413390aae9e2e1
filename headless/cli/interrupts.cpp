#include "headless/cli/interrupts.h"

#include "headless/cli/no_threads.h"
#include "headless/failure/failure.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace zn::headless {

namespace {

// A signal handler may do very little; this one wakes the watcher through a pipe.
int toWatcher = -1;

void wakeWatcher(int signal) {
    const int error = errno;
    const auto byte = static_cast<unsigned char>(signal);
    [[maybe_unused]] const ssize_t written = write(toWatcher, &byte, 1);
    errno = error;
}

// A signal that the caller ignores stays ignored, as hang-ups under nohup and Ctrl-C in a script's background jobs.
void handle(int signal) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler == SIG_IGN) return;
    struct sigaction action {};
    action.sa_handler = wakeWatcher;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

// Standard error itself leads nowhere while the image library is at work; see QuietLibrary.
int lastingStandardError() {
    const int copy = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    return copy >= 0 ? copy : STDERR_FILENO;
}

[[noreturn]] void watch(int pipe, int standardError, UnfinishedWork& unfinished) {
    unsigned char signal = 0;
    while (read(pipe, &signal, 1) != 1) continue;
    const std::string text = unfinished.interrupt(128 + signal);
    const char* start = isatty(standardError) != 0 ? "\n" : ""; // below the progress bar
    dprintf(standardError, "%sznica: %s\n", start, text.c_str());
    std::_Exit(128 + signal);
}

} // namespace

void watchInterrupts(UnfinishedWork& unfinished) {
    int ends[2];
    if (pipe(ends) != 0) return; // signals keep their usual effect
    toWatcher = ends[1];
    const int standardError = lastingStandardError();
    try {
        std::thread([reader = ends[0], standardError, &unfinished] {
            watch(reader, standardError, unfinished);
        }).detach();
    } catch (const std::system_error&) {
        throw Failure(ExitStatus::kMemory, ZN_NO_THREADS);
    }
    std::signal(SIGXFSZ, SIG_IGN); // exceeding a file size limit becomes a failed write
    std::signal(SIGPIPE, SIG_IGN); // a reader that stops early, such as head, still wants the result
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) handle(signal);
}

} // namespace zn::headless
