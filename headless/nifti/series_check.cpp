#include "headless/nifti/series_check.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace zn {

namespace {

// Counts the voxels of the mask whose time course satisfies the condition, up to `most`.
template <class Value, class Condition>
std::int64_t countVoxels(const Value* values, const TimeSeries& series, const std::vector<unsigned char>& mask,
                         std::int64_t most, Condition condition) {
    const auto volumes = static_cast<std::size_t>(series.volumes);
    std::int64_t count = 0;
    for (std::int64_t v = 0; v < series.voxels && count < most; ++v) {
        if (!mask.empty() && mask[static_cast<std::size_t>(v)] == 0) continue;
        if (condition(std::span(values + v * series.volumes, volumes))) ++count;
    }
    return count;
}

} // namespace

bool variesOverTime(const TimeSeries& series, const std::vector<unsigned char>& mask) {
    const auto varies = [](auto course) {
        return std::any_of(course.begin(), course.end(), [&](auto value) { return value != course.front(); });
    };
    return (series.isFloat() ? countVoxels(series.floats.get(), series, mask, 1, varies)
                             : countVoxels(series.shorts.get(), series, mask, 1, varies)) > 0;
}

std::int64_t voxelsNotFinite(const TimeSeries& series, const std::vector<unsigned char>& mask) {
    if (!series.isFloat()) return 0;
    return countVoxels(series.floats.get(), series, mask, series.voxels, [](auto course) {
        return std::any_of(course.begin(), course.end(), [](float value) { return !std::isfinite(value); });
    });
}

} // namespace zn
