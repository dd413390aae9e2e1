#include "headless/prepare/smooth_series.h"

#include "headless/prepare/gaussian_kernel.h"

#include <algorithm>
#include <cstdlib>

namespace zn::headless {

namespace {

// The lines of a grid along one axis.
struct Lines {
    int length;
    std::int64_t step; // from one voxel of a line to the next
    int count;

    Lines(const std::array<int, 3>& size, std::size_t axis)
        : length(size[axis]), step(axis == 0   ? 1
                                   : axis == 1 ? size[0]
                                               : std::int64_t{1} * size[0] * size[1]),
          count(size[(axis + 1) % 3] * size[(axis + 2) % 3]) {}

    // The first voxel of line i, counting the voxels whose coordinate along the axis is 0.
    std::int64_t begin(int i) const { return i / step * step * length + i % step; }
};

using Flags = std::vector<unsigned char>; // [voxel]

// The rows of one line of voxels before it is smoothed, and which of them are not 0.
struct LineCopy {
    std::vector<float> values; // [position][column]
    Flags filled;              // [position]

    LineCopy(int length, int columns)
        : values(static_cast<std::size_t>(length) * static_cast<std::size_t>(columns)),
          filled(static_cast<std::size_t>(length)) {}

    bool has(int at) const {
        return at >= 0 && at < static_cast<int>(filled.size()) && filled[static_cast<std::size_t>(at)] != 0;
    }
    bool isEmpty() const { return std::find(filled.begin(), filled.end(), 1) == filled.end(); }
};

// target[t] = sum over d of kernel[d] (line[at - d][t] + line[at + d][t]); rows beyond the line count as 0. False, and
// nothing is written, when all of them are 0.
bool convolve(const LineCopy& line, int at, const std::vector<float>& kernel, int columns, float* target) {
    bool filled = false;
    const int radius = static_cast<int>(kernel.size()) - 1;
    for (int d = -radius; d <= radius; ++d) {
        if (!line.has(at + d)) continue;
        if (!filled) std::fill_n(target, columns, 0.0f);
        filled = true;
        const float weight = kernel[static_cast<std::size_t>(std::abs(d))];
        const float* source = line.values.data() + std::ptrdiff_t{at + d} * columns;
        for (int t = 0; t < columns; ++t) target[t] += weight * source[t];
    }
    return filled;
}

// Values on a grid, of which only some rows are not 0: those outside cost no arithmetic.
struct SparseGrid {
    float* values;
    int columns;  // values per voxel
    Flags filled; // the voxels that are not 0

    void copyLine(const Lines& lines, int i, LineCopy& line) const {
        for (int at = 0; at < lines.length; ++at) {
            const std::int64_t voxel = lines.begin(i) + at * lines.step;
            line.filled[static_cast<std::size_t>(at)] = filled[static_cast<std::size_t>(voxel)];
            if (line.has(at)) {
                std::copy_n(values + voxel * columns, columns, line.values.data() + std::ptrdiff_t{at} * columns);
            }
        }
    }
};

// Along one axis; only the wanted voxels are computed.
void smoothAlong(SparseGrid& grid, const Lines& lines, const std::vector<float>& kernel, const Flags& wanted,
                 WorkerThreads& threads) {
    constexpr int kPieces = 64; // enough for any number of threads, few enough to share a line's buffer
    const int pieces = std::min(kPieces, lines.count);
    threads.run(pieces, [&](int piece) {
        LineCopy line(lines.length, grid.columns);
        const auto bound = [&](int p) { return static_cast<int>(std::int64_t{1} * lines.count * p / pieces); };
        for (int i = bound(piece); i < bound(piece + 1); ++i) {
            grid.copyLine(lines, i, line);
            if (line.isEmpty()) continue;
            for (int at = 0; at < lines.length; ++at) {
                const std::int64_t voxel = lines.begin(i) + at * lines.step;
                if (wanted[static_cast<std::size_t>(voxel)] == 0) continue;
                const bool filled = convolve(line, at, kernel, grid.columns, grid.values + voxel * grid.columns);
                grid.filled[static_cast<std::size_t>(voxel)] = filled ? 1 : 0;
            }
        }
    });
}

// Values outside the mask are undefined afterwards.
void smoothGrid(SparseGrid grid, const MaskedSeries& series, const std::array<double, 3>& sigma,
                WorkerThreads& threads) {
    std::vector<std::size_t> axes;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (series.size[axis] > 1 && gaussianKernel(sigma[axis]).size() > 1) axes.push_back(axis);
    }
    const Flags all(grid.filled.size(), 1);
    for (const std::size_t axis : axes) {
        smoothAlong(grid, Lines(series.size, axis), gaussianKernel(sigma[axis]),
                    axis == axes.back() ? series.mask : all, threads);
    }
}

} // namespace

void smoothSeries(const MaskedSeries& series, const std::array<double, 3>& sigma, WorkerThreads& threads) {
    const std::int64_t voxels = series.voxels();
    Flags inside(static_cast<std::size_t>(voxels));
    for (std::int64_t v = 0; v < voxels; ++v) inside[static_cast<std::size_t>(v)] = series.has(v) ? 1 : 0;
    std::vector<float> weights(inside.begin(), inside.end());
    smoothGrid({weights.data(), 1, inside}, series, sigma, threads);
    smoothGrid({series.values, series.volumes, inside}, series, sigma, threads);
    constexpr std::int64_t kVoxels = 4096; // per piece
    threads.run(static_cast<int>((voxels + kVoxels - 1) / kVoxels), [&](int piece) {
        const std::int64_t end = std::min(voxels, (piece + 1) * kVoxels);
        for (std::int64_t v = piece * kVoxels; v < end; ++v) {
            float* course = series.course(v);
            const float weight = series.has(v) ? weights[static_cast<std::size_t>(v)] : 0.0f;
            if (weight > 0.0f) {
                for (int t = 0; t < series.volumes; ++t) course[t] /= weight;
            } else {
                std::fill_n(course, series.volumes, 0.0f);
            }
        }
    });
}

} // namespace zn::headless
