// The functions of the list that no analysis needs. They exist so that a plug-in can look them up; when called, each
// returns null and logs, once per session, that it is not available.
#include "headless/host/current_session.h"

#include <string>

namespace zn::headless {

namespace {

void* unavailable(const char* name) {
    guarded([&](Session& session) {
        if (!session.unavailable.insert(name).second) return;
        session.events->logLine(std::string("znica: ") + name + " is not available in this host");
    });
    return nullptr;
}

} // namespace

extern "C" {
#define ZN(result, name, parameters)
#define ZN_UNUSED(name)                                                                                                \
    ZN_HOST_EXPORT void* name() {                                                                                      \
        return unavailable(#name);                                                                                     \
    }
#include "host/host_functions.def"
#undef ZN_UNUSED
#undef ZN
}

} // namespace zn::headless
