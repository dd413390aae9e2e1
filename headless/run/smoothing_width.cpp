#include "headless/run/smoothing_width.h"

#include "headless/nifti/voxel_size.h"
#include "headless/statistics/gaussian_width.h"

#include <cmath>

namespace zn::headless {

namespace {

constexpr double kTargetVoxels = 1.5;

} // namespace

double geometricMean(const std::array<double, 3>& widths, const std::array<int, 3>& grid) {
    double product = 1.0;
    int axes = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (grid[axis] == 1) continue;
        product *= widths[axis];
        ++axes;
    }
    return axes > 0 ? std::pow(product, 1.0 / axes) : 0.0;
}

double automaticWidth(const ImageHeader& image) {
    return kTargetVoxels * geometricMean(voxelSize(image), image.size);
}

std::array<double, 3> sigmaInVoxels(double millimetres, const ImageHeader& image) {
    std::array<double, 3> sigma = voxelSize(image);
    for (double& value : sigma) value = millimetres / kFwhmOfUnitSigma / value;
    return sigma;
}

} // namespace zn::headless
