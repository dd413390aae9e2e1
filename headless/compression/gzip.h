#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zn::headless {

/// Compresses into one gzip member (RFC 1952), which browsers can unpack without a library. The same bytes give the
/// same member on every machine. Throws std::bad_alloc.
std::vector<std::byte> gzip(std::span<const std::byte> bytes);

} // namespace zn::headless
