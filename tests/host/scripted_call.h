#pragma once

#include "host/host_function.h"

#include <string>

namespace zn::test {

/// A call from the plug-in into the scripted host; lives as long as the call lasts. Recorded when it has a text.
class Call {
public:
    explicit Call(const std::string& text);
    Call();
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
};

} // namespace zn::test
