#include "headless/mask/voxel_summary.h"

#include <algorithm>
#include <cmath>
#include <type_traits>
#include <utility>

namespace zn::headless {

namespace {

using Flags = std::vector<unsigned char>; // [voxel]

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

constexpr int kTogether = 8;              // sums of voxels side by side hide the latency of their additions
constexpr int kRun = 4;                   // values of a voxel that are read together
constexpr std::int64_t kPieceSize = 4096; // voxels that a thread takes at a time

// Whole numbers may be added in any order, that is, several at a time.
template <class Value> using Sum = std::conditional_t<std::is_integral_v<Value>, std::int64_t, double>;

template <class Value> bool isConstant(const Value* course, int volumes) {
    return std::all_of(course, course + volumes, [first = *course](Value value) { return value == first; });
}

template <class Value> class Summary {
public:
    Summary(const Value* values, std::int64_t voxels, int volumes, WorkerThreads& threads, const Flags& mask)
        : values_(values), volumes_(volumes), mask_(mask) {
        result_.mean.resize(static_cast<std::size_t>(voxels));
        result_.finite.resize(result_.mean.size());
        result_.constant.resize(result_.mean.size());
        threads.run(static_cast<int>((voxels + kPieceSize - 1) / kPieceSize), [&](int piece) {
            const std::int64_t end = std::min(voxels, (piece + 1) * kPieceSize);
            std::int64_t voxel = piece * kPieceSize;
            for (; voxel + kTogether <= end; voxel += kTogether) add<kTogether>(voxel);
            for (; voxel < end; ++voxel) add<1>(voxel);
        });
    }

    VoxelSummary result() && { return std::move(result_); }

private:
    const Value* course(std::int64_t voxel) const { return values_ + voxel * volumes_; }

    bool anyInside(std::int64_t first, int count) const {
        if (mask_.empty()) return true;
        const unsigned char* begin = mask_.data() + first;
        return std::any_of(begin, begin + count, [](unsigned char inside) { return inside != 0; });
    }

    // A few consecutive voxels; the values of each are added in the order of the volumes.
    template <int together> void add(std::int64_t first) {
        if (!anyInside(first, together)) return;
        Sum<Value> sums[together] = {};
        int t = 0;
        for (; t + kRun <= volumes_; t += kRun) {
            for (int i = 0; i < together; ++i) {
                const Value* run = course(first + i) + t;
                for (int j = 0; j < kRun; ++j) sums[i] += run[j];
            }
        }
        for (; t < volumes_; ++t) {
            for (int i = 0; i < together; ++i) sums[i] += course(first + i)[t];
        }
        for (int i = 0; i < together; ++i) settle(first + i, static_cast<double>(sums[i]));
    }

    void settle(std::int64_t voxel, double sum) {
        const auto v = static_cast<std::size_t>(voxel);
        // A sum of single-precision values cannot overflow double precision: it is finite if and only if they all are.
        const bool finite = std::isfinite(sum);
        result_.mean[v] = finite ? static_cast<float>(sum / volumes_) : meanOfFinite(course(voxel), volumes_);
        result_.finite[v] = finite ? 1 : 0;
        result_.constant[v] = finite && isConstant(course(voxel), volumes_) ? 1 : 0;
    }

    const Value* values_;
    int volumes_;
    const Flags& mask_;
    VoxelSummary result_;
};

VoxelSummary summaryOfValues(const TimeSeries& series, WorkerThreads& threads, const Flags& mask) {
    if (series.isFloat()) return Summary(series.floats.get(), series.voxels, series.volumes, threads, mask).result();
    return Summary(series.shorts.get(), series.voxels, series.volumes, threads, mask).result();
}

} // namespace

VoxelSummary summariseVoxels(const TimeSeries& series, WorkerThreads& threads, const Flags& mask) {
    VoxelSummary summary = summaryOfValues(series, threads, mask.empty() ? series.inside : mask);
    for (std::size_t v = 0; v < series.sums.size(); ++v) {
        if (series.inside[v] != 0) continue;
        const double sum = series.sums[v];
        summary.finite[v] = std::isfinite(sum) ? 1 : 0;
        summary.mean[v] = summary.finite[v] != 0 ? static_cast<float>(sum / series.volumes) : 0.0f;
    }
    return summary;
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
