#include "headless/cli/standard_output.h"

#include "headless/failure/failure.h"

#include <cstdio>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace zn::headless {

namespace {

bool readerHasExited() {
    pollfd output = {STDOUT_FILENO, POLLOUT, 0};
    return poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

} // namespace

void openStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) >= 0) continue;
        if (open("/dev/null", O_RDWR) < 0) return; // takes the lowest number that is free: this one
    }
}

void requirePrinted() {
    const bool flushed = std::fflush(stdout) == 0;
    if ((flushed && std::ferror(stdout) == 0) || readerHasExited()) return;
    throw Failure(ExitStatus::kOther,
                  "standard output cannot be written; check the free space where it is redirected.");
}

} // namespace zn::headless
