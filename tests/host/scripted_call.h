#pragma once

#include "host/host_function.h"

#include <string>

namespace zn::test {

/// A call from the plug-in into the scripted host; lives as long as the call lasts.
class Call {
public:
    /// The text is the function's name with its arguments in parentheses.
    explicit Call(const std::string& text, bool recorded = true);
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
};

} // namespace zn::test
