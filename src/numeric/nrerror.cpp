#include "numeric/nrerror.h"

#include <cstdio>
#include <cstdlib>

namespace zn {

namespace {

int unwinders = 0; // everything runs on one thread, the host's

} // namespace

void nrerror(const char* text) {
    if (unwinders > 0) throw FatalNumericError(text);
    std::fprintf(stderr, "Numerical Recipes run-time error...\n");
    std::fprintf(stderr, "%s\n", text);
    std::fprintf(stderr, "...now exiting to system...\n");
    std::exit(1);
}

UnwindFatalErrors::UnwindFatalErrors() {
    ++unwinders;
}

UnwindFatalErrors::~UnwindFatalErrors() {
    --unwinders;
}

} // namespace zn
