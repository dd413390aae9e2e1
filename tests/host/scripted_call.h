#pragma once

#include "host/host_function.h"

#include <string>

namespace zn::test {

/// A call that the plug-in makes into the scripted host, for as long as it lasts. Recorded when it has a text.
class Call {
public:
    explicit Call(const std::string& text);
    Call();
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
};

} // namespace zn::test
