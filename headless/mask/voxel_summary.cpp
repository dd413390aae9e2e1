#include "headless/mask/voxel_summary.h"

#include <cmath>
#include <type_traits>

namespace zn::headless {

namespace {

template <class Value> float meanOfFinite(const Value* course, int volumes) {
    double sum = 0.0;
    int count = 0;
    for (int t = 0; t < volumes; ++t) {
        const auto value = static_cast<double>(course[t]);
        if (!std::isfinite(value)) continue;
        sum += value;
        ++count;
    }
    return count > 0 ? static_cast<float>(sum / count) : 0.0f;
}

// Whole numbers may be added in any order, that is, several at a time.
template <class Value> using Sum = std::conditional_t<std::is_integral_v<Value>, std::int64_t, double>;

template <class Value> VoxelSummary summarise(const Value* values, std::int64_t voxels, int volumes) {
    VoxelSummary result;
    result.mean.resize(static_cast<std::size_t>(voxels));
    result.finite.resize(result.mean.size());
    result.constant.resize(result.mean.size());
    for (std::size_t v = 0; v < result.mean.size(); ++v) {
        const Value* course = values + v * static_cast<std::size_t>(volumes);
        Sum<Value> exact = 0;
        bool varies = false;
        for (int t = 0; t < volumes; ++t) {
            exact += course[t];
            varies |= course[t] != course[0];
        }
        const auto sum = static_cast<double>(exact);
        // A sum of single-precision values cannot overflow double precision: it is finite if and only if they all are.
        const bool finite = std::isfinite(sum);
        result.mean[v] = finite ? static_cast<float>(sum / volumes) : meanOfFinite(course, volumes);
        result.finite[v] = finite ? 1 : 0;
        result.constant[v] = finite && !varies ? 1 : 0;
    }
    return result;
}

} // namespace

VoxelSummary summariseVoxels(const TimeSeries& series) {
    return series.isFloat() ? summarise(series.floats.get(), series.voxels, series.volumes)
                            : summarise(series.shorts.get(), series.voxels, series.volumes);
}

ExcludedVoxels removeUnusable(const VoxelSummary& summary, std::vector<unsigned char>& mask) {
    ExcludedVoxels excluded;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] == 0) continue;
        if (summary.finite[v] != 0 && summary.constant[v] == 0) continue;
        ++(summary.finite[v] == 0 ? excluded.notFinite : excluded.constant);
        mask[v] = 0;
    }
    return excluded;
}

} // namespace zn::headless
