#include "headless/report/base64.h"

#include <algorithm>
#include <cstdint>

namespace zn::headless {

std::string base64(std::span<const std::byte> bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    char* next = text.data();
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t have = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t b = 0; b < have; ++b) group |= std::to_integer<std::uint32_t>(bytes[i + b]) << (16 - 8 * b);
        for (std::size_t digit = 0; digit <= have; ++digit) next[digit] = kDigits[group >> (18 - 6 * digit) & 63u];
        next += 4;
    }
    return text;
}

} // namespace zn::headless
