#include "host/log.h"

#include "host/host_api.h"

#include <array>
#include <cstdarg>
#include <cstdio>

namespace zn {

void logLine(const char* format, ...) {
    std::array<char, 512> text{}; // the longest line of a run has about 120 characters
    std::va_list arguments;
    va_start(arguments, format);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_start was called
    std::vsnprintf(text.data(), text.size(), format, arguments);
    va_end(arguments);
    host().znLogText(text.data());
}

} // namespace zn
