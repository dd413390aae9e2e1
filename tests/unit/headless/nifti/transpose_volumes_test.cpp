#include "headless/nifti/transpose_volumes.h"

#include <cstdint>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(TransposeVolumes, PutsTheVolumesOfAVoxelSideBySide) {
    const std::vector<std::int16_t> volumes = {1,  2,  3,   // volume 0, voxels 0 to 2
                                               11, 12, 13}; // volume 1
    std::vector<std::int16_t> series(6);
    transposeVolumes(volumes.data(), 2, 3, series.data(), 2, 0);
    EXPECT_THAT(series, testing::ElementsAre(1, 11, 2, 12, 3, 13));
}

TEST(TransposeVolumes, FillsOnlyItsOwnVolumesOfALongerSeries) {
    const std::vector<float> volumes = {1, 2, 11, 12};
    std::vector<float> series(2 * 5, -1.0f);
    transposeVolumes(volumes.data(), 2, 2, series.data(), 5, 3);
    EXPECT_THAT(series, testing::ElementsAre(-1, -1, -1, 1, 11, -1, -1, -1, 2, 12));
}

TEST(TransposeVolumes, KeepsEveryValueForAnyNumberOfVoxelsAroundTheBlock) {
    for (const std::int64_t voxels : {1, 511, 512, 513, 1024, 1500}) {
        constexpr int kVolumes = 7;
        std::vector<std::int32_t> volumes;
        for (std::int32_t i = 0; i < kVolumes * voxels; ++i) volumes.push_back(i);
        std::vector<std::int32_t> series(volumes.size());
        transposeVolumes(volumes.data(), kVolumes, voxels, series.data(), kVolumes, 0);
        for (std::int64_t v = 0; v < voxels; ++v) {
            for (int t = 0; t < kVolumes; ++t) {
                ASSERT_EQ(series[static_cast<std::size_t>(v * kVolumes + t)], t * voxels + v);
            }
        }
    }
}

} // namespace
} // namespace zn::test
