#pragma once

#include <array>
#include <vector>

namespace zn::headless {

/// A brain mask from one image: the voxels at or above its intensityThreshold(), of these the largest part that hangs
/// together across faces, with everything that this part encloses. The image should be the mean over time. Where the
/// values are no intensities, every voxel is taken.
///
///   image   one value a voxel, x fastest; values that are not finite lie below every threshold
///   size    voxels along x, y, z
std::vector<unsigned char> brainMask(const std::vector<float>& image, const std::array<int, 3>& size);

/// Keeps the largest part of the mask whose voxels hang together across faces; of equal ones the first.
void keepLargestPart(std::vector<unsigned char>& mask, const std::array<int, 3>& size);

/// Adds every voxel that cannot be reached across faces from the border of the grid without crossing the mask.
void fillHoles(std::vector<unsigned char>& mask, const std::array<int, 3>& size);

} // namespace zn::headless
