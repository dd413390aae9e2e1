#pragma once

#include <string>

namespace zn::testing {

/// A call that the plug-in makes into the scripted host, for as long as it lasts. Recorded when it has a text.
class Call {
public:
    explicit Call(const std::string& text);
    Call();
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
};

} // namespace zn::testing

/// A host function: C linkage, visible to the plug-in.
#ifdef _WIN32
#define ZN_HOST_FUNCTION extern "C" __declspec(dllexport)
#else
#define ZN_HOST_FUNCTION extern "C" __attribute__((visibility("default")))
#endif
