#include "input/voi_templates.h"

#include "host/host_api.h"
#include "host/scripted_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace zn::test {
namespace {

using testing::ElementsAre;

class VoiTemplatesTest : public testing::Test {
protected:
    VoiTemplatesTest() {
        EXPECT_TRUE(bindHostApi());
        host = ScriptedHost{};
        host.setGrid(4, 3, 2); // 3 mm voxels from 57, 52, 59
        vtc.header = host.header;
        vtc.grid = {4, 3, 2};
        vtc.voxels = 24;
    }

    long long indexOf(int c0, int c1, int c2, int space = 0) {
        const int c[3] = {c0, c1, c2};
        return voiVoxelToGridIndex(c, space, vtc.header, vtc.grid);
    }

    ScriptedHost& host = scripted();
    Vtc vtc;
};

TEST_F(VoiTemplatesTest, CountsGridVoxelsFromTheStartOfTheBoundingBox) {
    EXPECT_EQ(indexOf(57, 52, 59), 0);
    EXPECT_EQ(indexOf(60, 52, 59), 1);
    EXPECT_EQ(indexOf(57, 55, 59), 4);
    EXPECT_EQ(indexOf(57, 52, 62), 12);
    EXPECT_EQ(indexOf(66, 58, 62), 23);
}

TEST_F(VoiTemplatesTest, RoundsToTheNearestVoxelOfTheGrid) {
    EXPECT_EQ(indexOf(58, 52, 59), 0);  // a third
    EXPECT_EQ(indexOf(59, 52, 59), 1);  // two thirds
    EXPECT_EQ(indexOf(56, 52, 59), 0);  // a third below the first
    EXPECT_EQ(indexOf(55, 52, 59), -1); // two thirds below
}

TEST_F(VoiTemplatesTest, RoundsHalvesUpBelowZeroToo) {
    vtc.header.resolution = 2;
    EXPECT_EQ(indexOf(58, 52, 59), 1); // +0.5 -> 1
    EXPECT_EQ(indexOf(56, 52, 59), 0); // -0.5 -> 0
    EXPECT_EQ(indexOf(54, 52, 59), -1);
}

TEST_F(VoiTemplatesTest, DropsPositionsOutsideTheGrid) {
    EXPECT_EQ(indexOf(57 + 12, 52, 59), -1);
    EXPECT_EQ(indexOf(57, 52 + 9, 59), -1);
    EXPECT_EQ(indexOf(57, 52, 59 + 6), -1);
    constexpr int most = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_EQ(indexOf(most, most, most), -1);
    EXPECT_EQ(indexOf(least, least, least), -1);
    EXPECT_EQ(indexOf(least, least, least, kCentredSpace), -1);
}

TEST_F(VoiTemplatesTest, InCentredSpaceRunDownwardsFrom128InTheOrderYZX) {
    // x = 128 - c1, y = 128 - c2, z = 128 - c0
    EXPECT_EQ(indexOf(128 - 62, 128 - 60, 128 - 55, kCentredSpace), 1 + 4 + 12);
    vtc.header.xStart = vtc.header.yStart = vtc.header.zStart = 0;
    EXPECT_EQ(indexOf(128, 128, 128, kCentredSpace), 0);
}

TEST_F(VoiTemplatesTest, InCentredSpaceStartAtExactly128) {
    vtc.header.resolution = 1;
    vtc.header.xStart = vtc.header.yStart = vtc.header.zStart = 0;
    EXPECT_EQ(indexOf(128, 128, 128, kCentredSpace), 0);
    EXPECT_EQ(indexOf(127, 128, 128, kCentredSpace), 12); // z
    EXPECT_EQ(indexOf(128, 127, 128, kCentredSpace), 1);  // x
    EXPECT_EQ(indexOf(128, 128, 127, kCentredSpace), 4);  // y
    EXPECT_EQ(indexOf(129, 128, 128, kCentredSpace), -1);
    EXPECT_EQ(indexOf(128, 129, 128, kCentredSpace), -1);
    EXPECT_EQ(indexOf(128, 128, 129, kCentredSpace), -1);
}

TEST_F(VoiTemplatesTest, FollowTheOrderOfTheDataMatrix) {
    host.vois = {{57, 52, 59, 63, 52, 59}, {60, 55, 62}};
    auto templates = VoiTemplates::fetch(true, vtc);
    ASSERT_EQ(templates.count(), 2);
    for (int row = 0; row < 24; ++row) templates.take(23 - row, row); // in reverse order
    const std::vector<float> first(templates.rows()[0], templates.rows()[0] + 24);
    const std::vector<float> second(templates.rows()[1], templates.rows()[1] + 24);
    for (int row = 0; row < 24; ++row) {
        const int g = 23 - row;
        EXPECT_EQ(first[static_cast<std::size_t>(row)], g == 0 || g == 2 ? 1.0f : 0.0f) << g;
        EXPECT_EQ(second[static_cast<std::size_t>(row)], g == 17 ? 1.0f : 0.0f) << g;
    }
}

TEST_F(VoiTemplatesTest, OfAVoiOutsideTheBoxAreAllZero) {
    host.vois = {{0, 0, 0, 250, 250, 250}};
    auto templates = VoiTemplates::fetch(true, vtc);
    for (int row = 0; row < 24; ++row) templates.take(row, row);
    for (int row = 0; row < 24; ++row) EXPECT_EQ(templates.rows()[0][row], 0.0f);
}

TEST_F(VoiTemplatesTest, LogTheirNumber) {
    host.vois.assign(3, {57, 52, 59});
    EXPECT_EQ(VoiTemplates::fetch(true, vtc).count(), 3);
    EXPECT_THAT(host.log(), ElementsAre("// Plugin>  Number of VOIs currently defined (for spatial template): 3"));
}

TEST_F(VoiTemplatesTest, OfAnEmptySetMatchNothingButAreLogged) {
    EXPECT_EQ(VoiTemplates::fetch(true, vtc).count(), 0);
    EXPECT_THAT(host.log(), ElementsAre("// Plugin>  Number of VOIs currently defined (for spatial template): 0"));
}

TEST_F(VoiTemplatesTest, AreNotFetchedWithoutAVoiFile) {
    EXPECT_EQ(VoiTemplates::fetch(false, vtc).count(), 0);
    EXPECT_THAT(host.calls,
                ElementsAre("znLogText(// Plugin>  No VOI definition currently available (for spatial template))"));
}

TEST_F(VoiTemplatesTest, AreMissingWhenTheHostCannotHandThemOut) {
    host.vois.assign(3, {57, 52, 59});
    host.hasVois = false;
    EXPECT_EQ(VoiTemplates::fetch(true, vtc).count(), 0);
    EXPECT_THAT(host.log(), ElementsAre("// Plugin>  No VOI definition currently available (for spatial template)"));
}

// A bounding box that runs backwards along two axes has voxels, but no scan meets them.
TEST_F(VoiTemplatesTest, AreZeroForVoxelsThatNoScanMeets) {
    vtc.grid = {-4, -3, 2};
    host.hasVois = true;
    host.vois = {{57, 52, 59}};
    for (int block = 0; block < 8; ++block) { // freed memory that the rows may be made of
        std::vector<std::vector<float>> used(8, std::vector<float>(24, 7.0f));
    }
    const VoiTemplates templates = VoiTemplates::fetch(true, vtc);
    ASSERT_EQ(templates.count(), 1);
    for (int v = 0; v < 24; ++v) EXPECT_EQ(templates.rows()[0][v], 0.0f) << v;
}

} // namespace
} // namespace zn::test
