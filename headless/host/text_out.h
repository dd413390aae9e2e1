#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace zn::headless {

/// Characters in every text buffer that the plug-in hands to the host, the closing zero included.
constexpr std::size_t kTextBuffer = 256;

/// Copies a text into such a buffer, cut where the buffer ends.
inline void copyText(std::string_view text, char* buffer) {
    const std::size_t length = text.size() < kTextBuffer ? text.size() : kTextBuffer - 1;
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

} // namespace zn::headless
