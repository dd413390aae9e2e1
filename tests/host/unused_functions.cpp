// Every function of the host's list that the plug-in binds but must never call.

#include "host/scripted_call.h"

#include <string>

#define ZN(result, name, parameters)
#define ZN_UNUSED(name)                                                                                                \
    ZN_HOST_FUNCTION void name() {                                                                                     \
        const zn::test::Call entered(std::string("never to be called: ") + #name);                                     \
    }
#include "host/host_functions.def"
