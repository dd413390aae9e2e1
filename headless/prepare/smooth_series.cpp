#include "headless/prepare/smooth_series.h"

#include "headless/prepare/gaussian_kernel.h"

#include <algorithm>

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

// target[t] = sum over d of kernel[d] (line[at - d][t] + line[at + d][t]); rows beyond the line count as 0.
void convolve(const std::vector<float>& line, int rows, int at, const std::vector<float>& kernel, int columns,
              float* target) {
    const auto row = [&](int i) {
        return line.data() + static_cast<std::size_t>(i) * static_cast<std::size_t>(columns);
    };
    const float* centre = row(at);
    for (int t = 0; t < columns; ++t) target[t] = kernel[0] * centre[t];
    for (int d = 1; d < static_cast<int>(kernel.size()); ++d) {
        const float weight = kernel[static_cast<std::size_t>(d)];
        for (const int side : {at - d, at + d}) {
            if (side < 0 || side >= rows) continue;
            const float* source = row(side);
            for (int t = 0; t < columns; ++t) target[t] += weight * source[t];
        }
    }
}

// Along one axis, `columns` values per voxel.
void smoothAlong(float* values, int columns, const Lines& lines, const std::vector<float>& kernel,
                 WorkerThreads& threads) {
    constexpr int kPieces = 64; // enough for any number of threads, few enough to share a line's buffer
    const int pieces = std::min(kPieces, lines.count);
    threads.run(pieces, [&](int piece) {
        const auto width = static_cast<std::size_t>(columns);
        std::vector<float> line(static_cast<std::size_t>(lines.length) * width);
        const auto bound = [&](int p) { return static_cast<int>(std::int64_t{1} * lines.count * p / pieces); };
        for (int i = bound(piece); i < bound(piece + 1); ++i) {
            float* first = values + lines.begin(i) * columns;
            const std::int64_t step = lines.step * columns;
            for (int at = 0; at < lines.length; ++at) {
                std::copy_n(first + at * step, width, line.begin() + static_cast<std::ptrdiff_t>(width) * at);
            }
            for (int at = 0; at < lines.length; ++at) {
                convolve(line, lines.length, at, kernel, columns, first + at * step);
            }
        }
    });
}

void smoothGrid(float* values, int columns, const std::array<int, 3>& size, const std::array<double, 3>& sigma,
                WorkerThreads& threads) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const std::vector<float> kernel = gaussianKernel(sigma[axis]);
        if (size[axis] > 1 && kernel.size() > 1) smoothAlong(values, columns, Lines(size, axis), kernel, threads);
    }
}

} // namespace

void smoothSeries(const MaskedSeries& series, const std::array<double, 3>& sigma, WorkerThreads& threads) {
    const std::int64_t voxels = series.voxels();
    std::vector<float> weights(static_cast<std::size_t>(voxels));
    for (std::int64_t v = 0; v < voxels; ++v) {
        weights[static_cast<std::size_t>(v)] = series.has(v) ? 1.0f : 0.0f;
        if (!series.has(v)) std::fill_n(series.course(v), series.volumes, 0.0f);
    }
    smoothGrid(weights.data(), 1, series.size, sigma, threads);
    smoothGrid(series.values, series.volumes, series.size, sigma, threads);
    for (std::int64_t v = 0; v < voxels; ++v) {
        float* course = series.course(v);
        const float weight = weights[static_cast<std::size_t>(v)];
        for (int t = 0; t < series.volumes; ++t) course[t] = series.has(v) ? course[t] / weight : 0.0f;
    }
}

} // namespace zn::headless
