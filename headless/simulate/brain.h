#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zn::headless {

/// A grid with an ellipsoidal brain at its centre.
struct Brain {
    std::array<int, 3> size{};
    std::array<double, 3> halfAxes{}; ///< of the ellipsoid, in voxels
    double edge = 0.0;                ///< of a voxel, in millimetres
    int volumes = 0;
    std::vector<unsigned char> mask; ///< 1 inside
    std::vector<float> baseline;     ///< mean intensity of every voxel: about 1000 inside, 0 outside

    std::int64_t voxels() const { return std::int64_t{1} * size[0] * size[1] * size[2]; }
    std::int64_t voxelsInside() const;
    std::array<double, 3> centre() const { return {(size[0] - 1) / 2.0, (size[1] - 1) / 2.0, (size[2] - 1) / 2.0}; }
};

/// The brain of a named size: "tiny" (about 2,300 voxels inside, 80 volumes), "small" (22,000, 150), "medium" (53,000,
/// 200), "large" (177,000, 300).
Brain makeBrain(const std::string& sizeName);

} // namespace zn::headless
