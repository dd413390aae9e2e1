#include "headless/report/packed_map.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zn::headless {

namespace {

constexpr std::int16_t kNoPackedValue = -32768;
constexpr double kLargest = 32767.0;

// Decimals for values up to this magnitude: `digits` around 1 to 100, more below, fewer where 16 bits would overflow.
int decimalsFor(double magnitude, int digits) {
    if (magnitude <= 0.0) return digits;
    int decimals = digits;
    if (magnitude < 1.0) decimals += static_cast<int>(std::ceil(-std::log10(magnitude)));
    while (magnitude * std::pow(10.0, decimals) > kLargest) --decimals;
    return decimals;
}

std::int16_t rounded(float value, double scale) {
    if (!std::isfinite(value)) return kNoPackedValue;
    return static_cast<std::int16_t>(std::lround(double{value} * scale));
}

bool isSkewedDown(std::span<const float> values) {
    double sum = 0.0;
    double count = 0.0;
    for (const float value : values) {
        if (!std::isfinite(value)) continue;
        sum += double{value};
        ++count;
    }
    double cubes = 0.0;
    for (const float value : values) {
        if (!std::isfinite(value)) continue;
        const double deviation = double{value} - sum / count;
        cubes += deviation * deviation * deviation;
    }
    return cubes < 0.0;
}

} // namespace

PackedMap packMap(std::span<const float> values, int digits) {
    PackedMap map;
    bool any = false;
    for (const double value : values) {
        if (!std::isfinite(value)) continue;
        map.lowest = any ? std::min(map.lowest, value) : value;
        map.highest = any ? std::max(map.highest, value) : value;
        any = true;
    }
    map.negativeTail = isSkewedDown(values);
    map.decimals = decimalsFor(std::max(std::abs(map.lowest), std::abs(map.highest)), digits);
    const double scale = std::pow(10.0, map.decimals);

    map.bytes.resize(2 * values.size());
    std::uint16_t before = 0;
    for (std::size_t v = 0; v < values.size(); ++v) {
        const auto number = static_cast<std::uint16_t>(rounded(values[v], scale));
        const auto difference = static_cast<std::uint16_t>(number - before);
        map.bytes[v] = static_cast<std::byte>(difference & 0xffu);
        map.bytes[values.size() + v] = static_cast<std::byte>(difference >> 8);
        before = number;
    }
    return map;
}

} // namespace zn::headless
