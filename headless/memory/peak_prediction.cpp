#include "headless/memory/peak_prediction.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr double kMib = 1 << 20;
constexpr double kProcess = 14e6; // program, libraries and the BLAS work space, measured without data

} // namespace

// In double precision, so that no size overflows.
std::int64_t predictedPeakBytes(const RunSize& size) {
    const auto g = static_cast<double>(size.gridVoxels);
    const auto v = static_cast<double>(size.voxels);
    const auto t = static_cast<double>(size.volumes);
    const auto n = static_cast<double>(size.components);
    const auto regions = static_cast<double>(size.regions);

    const double everywhere = static_cast<double>(size.seriesBytes) + 11.0 * g + 24.0 * t * t + kProcess;
    const double templates = 4.0 * regions * v;
    const double reading = g * (128.0 + size.storedBytes);
    const double extraction = 4.0 * v * t + 56.0 * v + 4.0 * regions * g + templates;
    const double centring = 12.0 * v * t + 28.0 * v + templates;
    const double part = std::min(v / 2.0, std::max(v / 8.0, 200.0 * n));
    const double starts = size.symmetric ? 9.0 * part * n + v * n : 0.0;
    const double separation = 8.0 * v * t + 8.0 * v * n + 36.0 * v + starts + templates;
    const double compressing = std::min(4.0 * g * n, 32.0 * kMib * size.threads);
    const double maps = 4.0 * g * n + std::max(4.0 * v * n, compressing);
    const double keeping = std::max(12.0 * v * n, maps) + 20.0 * v + templates;
    const double all = n * size.repeats;
    const double repeats = size.repeats > 1 ? 8.0 * v * all + 4.0 * g * n + 16.0 * all * all : 0.0;
    return static_cast<std::int64_t>(everywhere + repeats +
                                     std::max({reading, extraction, centring, separation, keeping}));
}

} // namespace zn::headless
