#pragma once

#include <array>
#include <vector>

namespace zn::headless {

/// A brain mask from one image: the largest face-connected component of the voxels at or above its
/// intensityThreshold(), with its holes filled. The image should be the mean over time. If the values are not
/// intensities, every voxel is included.
///
///   image   one value per voxel, x fastest; non-finite values are below every threshold
///   size    voxels along x, y, z
std::vector<unsigned char> brainMask(const std::vector<float>& image, const std::array<int, 3>& size);

/// Keeps the largest face-connected component of the mask; in a tie, the first.
void keepLargestComponent(std::vector<unsigned char>& mask, const std::array<int, 3>& size);

/// Adds every voxel that is not face-connected to the border of the grid through voxels outside the mask.
void fillHoles(std::vector<unsigned char>& mask, const std::array<int, 3>& size);

} // namespace zn::headless
