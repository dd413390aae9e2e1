#pragma once

#include "headless/host/host_exports.h"
#include "headless/host/session.h"

#include <exception>
#include <new>
#include <utility>

namespace zn::headless {

/// Attaches a session to the exported functions, or none (null). The caller keeps the session alive while it is
/// attached, and calls this on the thread that runs the plug-in.
ZN_HOST_EXPORT void attachSession(Session* session);

/// The attached session. Ends the process with a message when there is none.
Session& currentSession();

/// Runs a host function's body; the first exception is kept in the session and `otherwise` is returned, because an
/// exception must not propagate through the plug-in.
template <class Body, class Result> Result guarded(Result otherwise, Body body) {
    Session& session = currentSession();
    try {
        return body(session);
    } catch (...) {
        if (!session.failure) session.failure = std::current_exception();
        return otherwise;
    }
}

/// The same for a function without a result.
template <class Body> void guarded(Body body) {
    guarded(0, [&](Session& session) {
        body(session);
        return 0;
    });
}

} // namespace zn::headless
