#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace zn::headless {

/// A checksum by which equal contents are recognised: CRC-64 with the polynomial of ECMA-182. Not a protection against
/// forgery.
class Checksum {
public:
    void add(std::span<const std::byte> bytes);
    /// 16 hexadecimal digits.
    std::string text() const;

private:
    std::uint64_t value_ = 0;
};

/// That of a text.
std::string checksumOf(const std::string& text);

} // namespace zn::headless
