#include "headless/nifti/quiet_library.h"

#include <cstdio>

#include <fcntl.h>
#include <nifti2_io.h>
#include <unistd.h>

namespace zn::headless {

namespace {

std::recursive_mutex& redirection() {
    static std::recursive_mutex mutex;
    return mutex;
}

} // namespace

QuietLibrary::QuietLibrary() : lock_(redirection()), standardError_(fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
    nifti_set_debug_level(0);
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere < 0) return;
    if (standardError_ >= 0) dup2(nowhere, STDERR_FILENO);
    close(nowhere);
}

QuietLibrary::~QuietLibrary() {
    if (standardError_ < 0) return;
    std::fflush(stderr);
    dup2(standardError_, STDERR_FILENO);
    close(standardError_);
}

} // namespace zn::headless
