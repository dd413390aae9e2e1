#include "headless/prepare/smooth_series.h"

#include "headless/prepare/line_copy.h"
#include "headless/prepare/smoothing_passes.h"

#include <algorithm>

namespace zn::headless {

namespace {

// Courses on a grid, of which only some are not 0: those outside cost no arithmetic.
struct SparseGrid {
    float* values;
    int columns;                       // values per voxel
    std::vector<unsigned char> filled; // [voxel], 0: the course is 0

    float* course(std::size_t voxel) const { return values + voxel * static_cast<std::size_t>(columns); }
};

void smoothLine(SparseGrid& grid, const SmoothingPass& pass, int i, const float* divisors, LineCopy& line) {
    for (int at = 0; at < pass.lines.length; ++at) {
        const std::size_t voxel = pass.lines.voxel(i, at);
        line.set(at, grid.filled[voxel] != 0 ? grid.course(voxel) : nullptr);
    }
    if (line.isEmpty()) return;
    for (int at = 0; at < pass.lines.length; ++at) {
        const std::size_t voxel = pass.lines.voxel(i, at);
        if (pass.wanted[voxel] == 0) continue;
        const float divisor = divisors ? divisors[voxel] : 1.0f;
        grid.filled[voxel] = line.convolve(at, pass.kernel, divisor, grid.course(voxel)) ? 1 : 0;
    }
}

// Along one axis.
//
//   divisors   [voxel], or null: 1
void smoothAlong(SparseGrid& grid, const SmoothingPass& pass, const float* divisors, WorkerThreads& threads) {
    constexpr int kPieces = 64; // enough for any number of threads, few enough to share a line's buffer
    const int lines = pass.lines.count;
    const int pieces = std::min(kPieces, lines);
    threads.run(pieces, [&](int piece) {
        LineCopy line(pass.lines.length, grid.columns);
        const auto bound = [&](int p) { return static_cast<int>(std::int64_t{1} * lines * p / pieces); };
        for (int i = bound(piece); i < bound(piece + 1); ++i) smoothLine(grid, pass, i, divisors, line);
    });
}

} // namespace

void smoothSeries(const MaskedSeries& series, const std::array<double, 3>& sigma, WorkerThreads& threads) {
    std::vector<unsigned char> inside(series.mask.size());
    std::transform(series.mask.begin(), series.mask.end(), inside.begin(),
                   [](unsigned char value) { return value != 0 ? 1 : 0; });
    const std::vector<SmoothingPass> passes = smoothingPasses(series.size, sigma, inside);
    std::vector<float> weights(inside.begin(), inside.end());
    SparseGrid mask{weights.data(), 1, inside};
    for (const SmoothingPass& pass : passes) smoothAlong(mask, pass, nullptr, threads);
    SparseGrid grid{series.values, series.volumes, inside};
    for (const SmoothingPass& pass : passes) {
        smoothAlong(grid, pass, &pass == &passes.back() ? weights.data() : nullptr, threads);
    }
}

} // namespace zn::headless
