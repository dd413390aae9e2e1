#include "headless/report/coarse_map.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace zn::headless {

namespace {

constexpr double kSteps = 127.0;               // to the largest magnitude that 8 bits can hold
constexpr double kFinestTenths = 2.0;          // smaller steps would mostly store noise
constexpr std::uint8_t kNoCoarseValue = 0x80u; // -128

double stepFor(std::span<const float> values) {
    double largest = 0.0;
    for (const float value : values) {
        if (std::isfinite(value)) largest = std::max(largest, std::fabs(double{value}));
    }
    return std::max(kFinestTenths, std::ceil(10.0 * largest / kSteps)) / 10.0;
}

std::uint8_t stepsTo(float value, double step) {
    if (!std::isfinite(value)) return kNoCoarseValue;
    return static_cast<std::uint8_t>(static_cast<std::int8_t>(std::lround(double{value} / step)));
}

} // namespace

CoarseMap packCoarsely(std::span<const float> values) {
    CoarseMap map;
    map.step = stepFor(values);
    map.bytes.reserve(values.size());
    std::uint8_t before = 0;
    for (const float value : values) {
        const std::uint8_t number = stepsTo(value, map.step);
        map.bytes.push_back(static_cast<std::byte>(static_cast<std::uint8_t>(number - before)));
        before = number;
    }
    return map;
}

} // namespace zn::headless
