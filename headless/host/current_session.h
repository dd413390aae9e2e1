#pragma once

#include "headless/host/host_exports.h"
#include "headless/host/session.h"

#include <exception>
#include <new>
#include <utility>

namespace zn::headless {

/// Puts a session behind the exported functions, or none (null). The caller keeps the session alive while it is
/// attached, and calls this on the thread that runs the plug-in.
ZN_HOST_EXPORT void attachSession(Session* session);

/// The session behind the exported functions. Ends the process with a message when none is attached.
Session& currentSession();

/// Runs a host function's body; what it throws is kept in the session (the first one only) and `otherwise` returned,
/// because an exception must not travel through the plug-in.
template <class Body, class Result> Result guarded(Result otherwise, Body body) {
    Session& session = currentSession();
    try {
        return body(session);
    } catch (...) {
        if (!session.failure) session.failure = std::current_exception();
        return otherwise;
    }
}

/// The same for a function without result.
template <class Body> void guarded(Body body) {
    guarded(0, [&](Session& session) {
        body(session);
        return 0;
    });
}

} // namespace zn::headless
