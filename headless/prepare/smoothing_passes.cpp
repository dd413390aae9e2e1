#include "headless/prepare/smoothing_passes.h"

#include "headless/prepare/gaussian_kernel.h"

#include <algorithm>
#include <utility>

namespace zn::headless {

namespace {

// The voxels within the radius of a wanted one.
std::vector<unsigned char> readBy(const SmoothingPass& pass) {
    const GridLines& lines = pass.lines;
    std::vector<unsigned char> result(pass.wanted.size());
    const auto step = static_cast<std::ptrdiff_t>(lines.step);
    for (int i = 0; i < lines.count; ++i) {
        const unsigned char* wanted = pass.wanted.data() + lines.voxel(i, 0);
        unsigned char* line = result.data() + lines.voxel(i, 0);
        int marked = 0; // the first position that no voxel so far has reached
        for (int at = 0; at < lines.length; ++at) {
            if (wanted[at * step] == 0) continue;
            const int end = std::min(lines.length, at + pass.radius() + 1);
            for (int near = std::max(marked, at - pass.radius()); near < end; ++near) line[near * step] = 1;
            marked = end;
        }
    }
    return result;
}

} // namespace

GridLines::GridLines(const std::array<int, 3>& size, std::size_t axis)
    : length(size[axis]), step(axis == 0   ? 1
                               : axis == 1 ? size[0]
                                           : std::int64_t{1} * size[0] * size[1]),
      count(size[(axis + 1) % 3] * size[(axis + 2) % 3]) {}

std::vector<SmoothingPass> smoothingPasses(const std::array<int, 3>& size, const std::array<double, 3>& sigma,
                                           const std::vector<unsigned char>& mask) {
    std::vector<SmoothingPass> passes;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        std::vector<float> kernel = gaussianKernel(sigma[axis]);
        if (size[axis] > 1 && kernel.size() > 1) passes.push_back({{size, axis}, std::move(kernel), mask});
    }
    for (std::size_t pass = passes.size(); pass-- > 1;) passes[pass - 1].wanted = readBy(passes[pass]);
    return passes;
}

} // namespace zn::headless
