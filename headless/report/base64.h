#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace zn::headless {

/// Bytes as text: RFC 4648, section 4, with padding, on one line.
std::string base64(std::span<const std::byte> bytes);

} // namespace zn::headless
