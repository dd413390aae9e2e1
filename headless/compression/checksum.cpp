#include "headless/compression/checksum.h"

#include <cinttypes>
#include <cstdio>

#include <isa-l/crc64.h>

namespace zn::headless {

void Checksum::add(std::span<const std::byte> bytes) {
    value_ = crc64_ecma_refl(value_, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

std::string Checksum::text() const {
    char text[24];
    std::snprintf(text, sizeof text, "%016" PRIx64, value_);
    return text;
}

std::string checksumOf(const std::string& text) {
    Checksum checksum;
    checksum.add(std::as_bytes(std::span(text)));
    return checksum.text();
}

} // namespace zn::headless
