#include "headless/mask/volumes_without_values.h"

#include <cmath>
#include <cstddef>

namespace zn::headless {

std::vector<int> volumesWithoutValues(const TimeSeries& series) {
    if (!series.isFloat()) return {};
    const auto volumes = static_cast<std::size_t>(series.volumes);
    std::vector<bool> valued(volumes);
    for (std::size_t v = 0; v < static_cast<std::size_t>(series.voxels); ++v) {
        if (!series.inside.empty() && series.inside[v] == 0) continue;
        for (std::size_t t = 0; t < volumes; ++t) {
            if (std::isfinite(series.floats[v * volumes + t])) valued[t] = true;
        }
    }
    std::vector<int> without;
    for (std::size_t t = 0; t < volumes; ++t) {
        if (!valued[t]) without.push_back(static_cast<int>(t));
    }
    return without;
}

} // namespace zn::headless
