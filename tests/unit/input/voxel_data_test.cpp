#include "input/voxel_data.h"

#include "host/host_api.h"
#include "host/scripted_host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace zn::test {
namespace {

class VoxelDataTest : public testing::Test {
protected:
    VoxelDataTest() {
        EXPECT_TRUE(bindHostApi());
        scripted() = ScriptedHost{};
        vtc.grid = {3, 2, 2};
        vtc.voxels = 12;
        vtc.header.volumes = 2;
        for (int i = 0; i < 24; ++i) floats.push_back(static_cast<float>(i) * 0.5f);
        for (int i = 0; i < 24; ++i) shorts.push_back(static_cast<short>(i * 100));
    }

    Vtc vtc;
    VoiTemplates templates;
    std::vector<float> floats;
    std::vector<short> shorts;
};

TEST_F(VoxelDataTest, TakesEveryVoxelInGridOrderWithoutAMask) {
    vtc.floatData = floats.data();
    const VoxelData data = extractVoxels(vtc, templates);
    for (int i = 0; i < 24; ++i) EXPECT_EQ(data.timeCourses[0][i], static_cast<float>(i) * 0.5f);
    const int last[3] = {2, 1, 1};
    for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(data.coordinates[11][axis], last[axis]);
    for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(data.coordinates[1][axis], axis == 0 ? 1 : 0); // x is innermost
}

TEST_F(VoxelDataTest, TakesOnlyVoxelsWhoseMaskByteIsNotZero) {
    vtc.floatData = floats.data();
    std::vector<unsigned char> mask(12, 0);
    mask[2] = 1;
    mask[7] = 255;
    vtc.mask = mask.data();
    vtc.voxels = 2;
    const VoxelData data = extractVoxels(vtc, templates);
    EXPECT_EQ(data.timeCourses[0][1], floats[5]); // voxel 2, volume 1
    EXPECT_EQ(data.timeCourses[1][0], floats[14]);
    EXPECT_EQ(data.list[1][1], 2);
    const int second[3] = {2, 1, 2}; // index 7 is x 1, y 0, z 1; counted from one
    for (int axis = 0; axis < 3; ++axis) EXPECT_EQ(data.list[3][axis + 1], second[axis]);
}

TEST_F(VoxelDataTest, ConvertsSixteenBitValuesExactly) {
    shorts[0] = -32768;
    shorts[1] = 32767;
    vtc.integerData = shorts.data();
    const VoxelData data = extractVoxels(vtc, templates);
    EXPECT_EQ(data.timeCourses[0][0], -32768.0f);
    EXPECT_EQ(data.timeCourses[0][1], 32767.0f);
}

TEST_F(VoxelDataTest, RemovesOnlyTheMeanOverVoxelsOfEachVolume) {
    OffsetMatrix<float> x(0, 2, 0, 1);
    const float values[3][2] = {{1, 10}, {2, 30}, {6, 20}}; // means 3 and 20
    for (int v = 0; v < 3; ++v) {
        for (int t = 0; t < 2; ++t) x[v][t] = values[v][t];
    }
    const ZeroedBlock centred = removeSpatialMean(x, 3, 2);
    const double expected[6] = {-2, -10, -1, 10, 3, 0};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(centred.get()[i], expected[i]);
    EXPECT_FALSE(x) << "the float matrix is released";
}

} // namespace
} // namespace zn::test
