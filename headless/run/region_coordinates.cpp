#include "headless/run/region_coordinates.h"

#include "host/voi_records.h"

namespace zn::headless {

std::vector<std::int32_t> regionCoordinates(const std::vector<std::int64_t>& voxels, const std::array<int, 3>& size,
                                            std::int32_t space) {
    constexpr std::int32_t kCentre = 128;
    std::vector<std::int32_t> coordinates;
    coordinates.reserve(3 * voxels.size());
    for (const std::int64_t voxel : voxels) {
        const auto x = static_cast<std::int32_t>(voxel % size[0]);
        const auto y = static_cast<std::int32_t>(voxel / size[0] % size[1]);
        const auto z = static_cast<std::int32_t>(voxel / size[0] / size[1]);
        if (space == kCentredSpace) {
            coordinates.insert(coordinates.end(), {kCentre - z, kCentre - x, kCentre - y});
        } else {
            coordinates.insert(coordinates.end(), {x, y, z});
        }
    }
    return coordinates;
}

} // namespace zn::headless
