#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zn::headless {

/// The lines of a grid along one axis.
struct GridLines {
    int length;
    std::int64_t step; ///< from one voxel of a line to the next
    int count;

    GridLines(const std::array<int, 3>& size, std::size_t axis);

    /// The voxel at a position of line i; the lines are counted by their first voxels, in order.
    std::size_t voxel(int i, int at) const {
        return static_cast<std::size_t>(i / step * step * length + i % step + at * step);
    }
};

/// The convolution along one axis.
struct SmoothingPass {
    GridLines lines;
    std::vector<float> kernel;         ///< at distances 0, 1, ... voxels
    std::vector<unsigned char> wanted; ///< [voxel], nonzero: to be computed

    int radius() const { return static_cast<int>(kernel.size()) - 1; }
};

/// The passes of a separable Gaussian, x first. The last one computes the voxels of the mask, each earlier one what the
/// next one reads. Axes with a single voxel, or with a sigma too small to matter, have none.
///
///   sigma   standard deviation along x, y, z in voxels; see gaussianKernel()
///   mask    one byte per voxel of the grid; nonzero: inside
std::vector<SmoothingPass> smoothingPasses(const std::array<int, 3>& size, const std::array<double, 3>& sigma,
                                           const std::vector<unsigned char>& mask);

} // namespace zn::headless
