#pragma once

#include <cfenv>

namespace zn {

/// While one of these is alive, floating-point errors do not raise a signal, whatever the host has set: dividing by
/// zero is part of the methods here. Afterwards the host's setting and its flags are back.
class QuietFloatingPoint {
public:
    QuietFloatingPoint() { std::feholdexcept(&host_); }
    ~QuietFloatingPoint() { std::fesetenv(&host_); }
    QuietFloatingPoint(const QuietFloatingPoint&) = delete;
    QuietFloatingPoint& operator=(const QuietFloatingPoint&) = delete;

private:
    std::fenv_t host_{};
};

} // namespace zn
