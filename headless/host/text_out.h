#pragma once

#include "host/host_text.h"

#include <cstring>
#include <string_view>

namespace zn::headless {

/// Copies a text into a buffer of the plug-in, truncated to its size.
inline void copyText(std::string_view text, char* buffer) {
    const std::size_t length = text.size() < kHostTextSize ? text.size() : kHostTextSize - 1;
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

} // namespace zn::headless
