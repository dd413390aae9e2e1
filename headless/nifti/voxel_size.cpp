#include "headless/nifti/voxel_size.h"

#include <cmath>

namespace zn::headless {

std::array<double, 3> voxelSize(const ImageHeader& header) {
    std::array<double, 3> size{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const Affine& a = header.affine;
        size[axis] = std::hypot(a[0][axis], a[1][axis], a[2][axis]);
    }
    return size;
}

} // namespace zn::headless
