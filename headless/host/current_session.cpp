#include "headless/host/current_session.h"

#include <cstdio>
#include <cstdlib>

namespace zn::headless {

namespace {

Session* current = nullptr; // the C interface has no parameter for it

} // namespace

void attachSession(Session* session) {
    current = session;
}

Session& currentSession() {
    if (!current) {
        std::fputs("TesmiraZN: a host function was called outside a session.\n", stderr);
        std::abort();
    }
    return *current;
}

} // namespace zn::headless
