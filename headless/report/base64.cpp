#include "headless/report/base64.h"

#include <algorithm>
#include <cstdint>

namespace zn::headless {

std::string base64(std::span<const std::byte> bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t have = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t group = 0;
        for (std::size_t b = 0; b < 3; ++b) {
            group = group << 8 | (b < have ? std::to_integer<std::uint32_t>(bytes[i + b]) : 0u);
        }
        for (std::size_t digit = 0; digit < 4; ++digit) {
            text += digit <= have ? kDigits[group >> (18 - 6 * digit) & 63u] : '=';
        }
    }
    return text;
}

} // namespace zn::headless
