#pragma once

#include <array>
#include <cstddef>

namespace zn {

/// Text buffers that the host fills hold 256 characters, the terminating zero included.
constexpr std::size_t kHostTextSize = 256;
using HostText = std::array<char, kHostTextSize>;

/// Ends the text inside its buffer, whatever the host wrote.
inline void terminate(HostText& text) {
    text.back() = '\0';
}

inline bool isEmpty(const HostText& text) {
    return text.front() == '\0';
}

} // namespace zn
