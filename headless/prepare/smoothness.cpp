#include "headless/prepare/smoothness.h"

#include "headless/prepare/change_sums.h"
#include "numeric/instruction_set.h"

#include <cmath>
#include <vector>

namespace zn::headless {

namespace {

struct PairSums {
    double differences = 0.0; // of squared differences
    double squares = 0.0;     // of both squares

    void add(const float* a, const float* b, int volumes) {
        static const auto addChanges = ZN_PICK_KERNEL(changeSumsKernel);
        float difference[kChangeSums] = {};
        float square[kChangeSums] = {};
        addChanges(a, b, volumes, difference, square);
        for (int i = 0; i < kChangeSums; ++i) {
            differences += static_cast<double>(difference[i]);
            squares += static_cast<double>(square[i]);
        }
    }

    void add(const PairSums& other) {
        differences += other.differences;
        squares += other.squares;
    }

    double fwhm() const {
        const double rho = squares > 0.0 ? 1.0 - differences / squares : 0.0;
        if (rho <= 0.0) return 0.0;
        return rho < 1.0 ? std::sqrt(-2.0 * std::log(2.0) / std::log(rho)) : INFINITY;
    }
};

using AxisSums = std::array<PairSums, 3>;

// Over the pairs whose first voxel lies in slice z.
AxisSums sumsOfSlice(const MaskedSeries& series, int z) {
    const auto& [nx, ny, nz] = series.size;
    const std::array<std::int64_t, 3> step = {1, nx, std::int64_t{1} * nx * ny};
    AxisSums sums;
    std::int64_t v = z * step[2];
    for (int y = 0; y < ny; ++y) {
        for (int x = 0; x < nx; ++x, ++v) {
            if (!series.has(v)) continue;
            const std::array<bool, 3> inside = {x + 1 < nx, y + 1 < ny, z + 1 < nz};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const std::int64_t next = v + step[axis];
                if (!inside[axis] || !series.has(next)) continue;
                sums[axis].add(series.course(v), series.course(next), series.volumes);
            }
        }
    }
    return sums;
}

} // namespace

std::array<double, 3> estimateSmoothness(const MaskedSeries& series, WorkerThreads& threads) {
    std::vector<AxisSums> slices(static_cast<std::size_t>(series.size[2]));
    threads.run(series.size[2], [&](int z) { slices[static_cast<std::size_t>(z)] = sumsOfSlice(series, z); });
    AxisSums sums;
    for (const AxisSums& slice : slices) {
        for (std::size_t axis = 0; axis < 3; ++axis) sums[axis].add(slice[axis]);
    }
    return {sums[0].fwhm(), sums[1].fwhm(), sums[2].fwhm()};
}

} // namespace zn::headless
