#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace zn::headless {

/// A gzip member, in a buffer for the largest that it might have been; the rest of it has not been touched.
struct GzipMember {
    std::unique_ptr<std::byte[]> buffer;
    std::size_t size = 0;

    std::span<const std::byte> bytes() const { return {buffer.get(), size}; }
};

/// Compresses into one gzip member (RFC 1952), which browsers can unpack without a library. The same bytes give the
/// same member on every machine. Throws std::bad_alloc.
GzipMember gzip(std::span<const std::byte> bytes);

} // namespace zn::headless
