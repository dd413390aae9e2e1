#include "headless/simulate/brain.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace zn::headless {

namespace {

Brain frameOf(const std::string& sizeName) {
    Brain brain;
    if (sizeName == "tiny") {
        brain = {{20, 24, 18}, {8.0, 10.0, 7.0}, 8.0, 80, {}, {}};
    } else if (sizeName == "medium") {
        brain = {{54, 64, 46}, {23.0, 28.0, 20.0}, 3.0, 200, {}, {}};
    } else if (sizeName == "large") {
        brain = {{80, 96, 70}, {34.0, 42.0, 30.0}, 2.0, 300, {}, {}};
    } else {
        brain = {{40, 48, 36}, {17.0, 21.0, 15.0}, 4.0, 150, {}, {}};
    }
    return brain;
}

// Bright towards the middle, a receive coil that favours one side, and folds: structure that real mean images have and
// that yields a separate component.
double intensityAt(const std::array<double, 3>& position, double squaredRadius) {
    const double folds = std::sin(9.0 * position[0]) * std::sin(7.0 * position[1]) * std::cos(8.0 * position[2]);
    return 900.0 + 220.0 * (1.0 - squaredRadius) + 60.0 * position[0] + 40.0 * folds;
}

} // namespace

std::int64_t Brain::voxelsInside() const {
    return std::count(mask.begin(), mask.end(), 1);
}

Brain makeBrain(const std::string& sizeName) {
    Brain brain = frameOf(sizeName);
    brain.mask.resize(static_cast<std::size_t>(brain.voxels()));
    brain.baseline.resize(brain.mask.size());
    std::size_t voxel = 0;
    for (int z = 0; z < brain.size[2]; ++z) {
        for (int y = 0; y < brain.size[1]; ++y) {
            for (int x = 0; x < brain.size[0]; ++x, ++voxel) {
                const auto centre = brain.centre();
                const std::array<double, 3> position = {(x - centre[0]) / brain.halfAxes[0],
                                                        (y - centre[1]) / brain.halfAxes[1],
                                                        (z - centre[2]) / brain.halfAxes[2]};
                const double squaredRadius =
                    position[0] * position[0] + position[1] * position[1] + position[2] * position[2];
                if (squaredRadius > 1.0) continue;
                brain.mask[voxel] = 1;
                brain.baseline[voxel] = static_cast<float>(intensityAt(position, squaredRadius));
            }
        }
    }
    return brain;
}

} // namespace zn::headless
