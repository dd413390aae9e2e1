#include "headless/run/region_coordinates.h"

#include "host/voi_records.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// The linear index (x fastest) at which a plug-in places a region's voxel on a grid that begins at 0 with resolution 1.
std::int64_t gridIndex(const std::int32_t* c, std::int32_t space, const std::array<int, 3>& size) {
    const float p = static_cast<float>(space == 3 ? 128 - c[1] : c[0]);
    const float q = static_cast<float>(space == 3 ? 128 - c[2] : c[1]);
    const float s = static_cast<float>(space == 3 ? 128 - c[0] : c[2]);
    const auto round = [](float v) { return static_cast<std::int64_t>(std::floor(v + 0.5f)); };
    return round(s) * size[0] * size[1] + round(q) * size[0] + round(p);
}

TEST(RegionCoordinates, MapBackToTheSameVoxelsInEitherSpace) {
    const std::array<int, 3> size = {6, 5, 4};
    std::vector<std::int64_t> voxels;
    for (std::int64_t v = 0; v < 120; v += 7) voxels.push_back(v);
    for (const std::int32_t space : {kCentredSpace, 0, 1}) {
        const auto coordinates = regionCoordinates(voxels, size, space);
        ASSERT_EQ(coordinates.size(), 3 * voxels.size());
        for (std::size_t i = 0; i < voxels.size(); ++i) {
            EXPECT_EQ(gridIndex(&coordinates[3 * i], space, size), voxels[i]) << space;
        }
    }
}

TEST(RegionCoordinates, AlsoWorkForGridsBeyondTheCentreOfTheHostsSpace) {
    const std::array<int, 3> size = {300, 300, 300};
    const std::vector<std::int64_t> last = {std::int64_t{300} * 300 * 300 - 1};
    const auto coordinates = regionCoordinates(last, size, kCentredSpace);
    EXPECT_THAT(coordinates, testing::ElementsAre(128 - 299, 128 - 299, 128 - 299));
    EXPECT_EQ(gridIndex(coordinates.data(), kCentredSpace, size), last[0]);
}

} // namespace
} // namespace zn::test
