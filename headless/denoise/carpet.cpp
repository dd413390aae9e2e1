#include "headless/denoise/carpet.h"

#include "headless/denoise/voxel_units.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

namespace {

double meanOf(const float* course, int volumes) {
    double sum = 0.0;
    for (int t = 0; t < volumes; ++t) sum += static_cast<double>(course[t]);
    return sum / volumes;
}

double sdOf(const float* course, int volumes, double mean) {
    double squares = 0.0;
    for (int t = 0; t < volumes; ++t) {
        const double deviation = static_cast<double>(course[t]) - mean;
        squares += deviation * deviation;
    }
    return std::sqrt(squares / (volumes - 1));
}

// The sum of the courses over the mask, without its mean.
std::vector<double> globalSignal(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds,
                                 WorkerThreads& threads) {
    const auto volumes = static_cast<std::size_t>(courses.volumes());
    std::vector<double> sums(static_cast<std::size_t>(unitsIn(courses.voxels)) * volumes);
    forEachUnit(threads, courses.voxels, [&](int, int unit, std::int64_t first, std::int64_t end) {
        double* sum = sums.data() + static_cast<std::size_t>(unit) * volumes;
        for (std::int64_t v = first; v < end; ++v) {
            if (kinds[static_cast<std::size_t>(v)] != VoxelKind::kInMask) continue;
            const float* course = courses.course(v);
            for (std::size_t t = 0; t < volumes; ++t) sum[t] += static_cast<double>(course[t]);
        }
    });
    std::vector<double> signal(volumes);
    double mean = 0.0;
    for (std::size_t i = 0; i < sums.size(); ++i) {
        signal[i % volumes] += sums[i];
        mean += sums[i] / static_cast<double>(volumes);
    }
    for (double& value : signal) value -= mean;
    return signal;
}

} // namespace

std::vector<std::int64_t> carpetVoxels(const AnalysedCourses& courses, const std::vector<VoxelKind>& kinds, int rows,
                                       WorkerThreads& threads) {
    const std::vector<double> signal = globalSignal(courses, kinds, threads);
    std::vector<float> similarity(kinds.size()); // correlation times the length of the signal, which orders alike
    forEachUnit(threads, courses.voxels, [&](int, int, std::int64_t first, std::int64_t end) {
        for (std::int64_t v = first; v < end; ++v) {
            if (kinds[static_cast<std::size_t>(v)] != VoxelKind::kInMask) continue;
            const float* course = courses.course(v);
            const double mean = meanOf(course, courses.volumes());
            double product = 0.0;
            for (std::size_t t = 0; t < signal.size(); ++t) product += signal[t] * static_cast<double>(course[t]);
            similarity[static_cast<std::size_t>(v)] =
                static_cast<float>(product / sdOf(course, courses.volumes(), mean));
        }
    });
    std::vector<std::int64_t> order;
    for (std::size_t v = 0; v < kinds.size(); ++v) {
        if (kinds[v] == VoxelKind::kInMask) order.push_back(static_cast<std::int64_t>(v));
    }
    std::stable_sort(order.begin(), order.end(), [&](std::int64_t a, std::int64_t b) {
        return similarity[static_cast<std::size_t>(a)] > similarity[static_cast<std::size_t>(b)];
    });
    const std::size_t count = std::min(order.size(), static_cast<std::size_t>(rows));
    std::vector<std::int64_t> chosen;
    for (std::size_t row = 0; row < count; ++row) chosen.push_back(order[(2 * row + 1) * order.size() / (2 * count)]);
    return chosen;
}

CarpetScale carpetScale(const AnalysedCourses& courses, const std::vector<std::int64_t>& voxels) {
    CarpetScale scale;
    for (const std::int64_t voxel : voxels) {
        const float* course = courses.course(voxel);
        scale.mean.push_back(meanOf(course, courses.volumes()));
        scale.sd.push_back(sdOf(course, courses.volumes(), scale.mean.back()));
    }
    return scale;
}

std::vector<float> carpetOf(const AnalysedCourses& courses, const std::vector<std::int64_t>& voxels,
                            const CarpetScale& scale) {
    std::vector<float> values;
    for (std::size_t row = 0; row < voxels.size(); ++row) {
        const float* course = courses.course(voxels[row]);
        for (int t = 0; t < courses.volumes(); ++t) {
            values.push_back(static_cast<float>((static_cast<double>(course[t]) - scale.mean[row]) / scale.sd[row]));
        }
    }
    return values;
}

} // namespace zn::headless
