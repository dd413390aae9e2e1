#include "headless/host/volume_maps.h"

#include <cstring>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

NRVMPsHeader box(int x, int y, int z, int resolution) {
    NRVMPsHeader header{};
    const int bounds[6] = {0, x, 0, y, 0, z};
    std::copy(std::begin(bounds), std::end(bounds), header.boundingBox);
    header.resolution = resolution;
    return header;
}

TEST(VolumeMaps, AreCreatedAsZerosWithRoomForEverything) {
    VolumeMaps maps;
    maps.create(2, 7, 16, box(4, 6, 10, 2));
    ASSERT_EQ(maps.maps().size(), 2U);
    EXPECT_EQ(maps.maps()[1].values, std::vector<float>(2 * 3 * 5));
    EXPECT_EQ(maps.maps()[1].timeCourse.size(), 7U);
    EXPECT_EQ(maps.maps()[1].parameters.size(), 16U);
}

TEST(VolumeMaps, WhatIsWrittenThroughTheRecordsIsKept) {
    VolumeMaps maps;
    maps.create(2, 3, 16, box(2, 2, 2, 1));
    NRVMPsHeader header{};
    maps.describe(header);
    std::strcpy(header.firstName, "a.vtc");
    std::strcpy(header.thirdName, "c.voi");
    std::strcpy(header.parameterNames[15], "Power Spectrum Band 5");
    header.parameterDisplayRange[3] = 16;
    maps.setDisplayRange(header);

    NRVMPMap record{};
    float* values = maps.describe(1, record);
    values[7] = 1.5f;
    std::strcpy(record.name, "IC 2");
    record.type = 12;
    record.timeCourse[2] = 0.25f;
    record.parameters[15] = 0.75f;
    maps.setParameters(1, record);

    const VolumeMap& map = maps.maps()[1];
    EXPECT_EQ(map.values[7], 1.5f);
    EXPECT_STREQ(map.name.data(), "IC 2");
    EXPECT_EQ(map.type, 12);
    EXPECT_EQ(map.timeCourse[2], 0.25f);
    EXPECT_EQ(map.parameters[15], 0.75f);
    NRVMPsHeader again{};
    maps.describe(again);
    EXPECT_STREQ(again.firstName, "a.vtc");
    EXPECT_STREQ(again.secondName, "");
    EXPECT_STREQ(again.thirdName, "c.voi");
    EXPECT_STREQ(again.parameterNames[15], "Power Spectrum Band 5");
    EXPECT_EQ(again.parameterDisplayRange[3], 16);
    EXPECT_EQ(maps.maps()[0].values, std::vector<float>(8)) << "the other map is untouched";
}

TEST(VolumeMaps, TheHeaderReportsTheGrid) {
    VolumeMaps maps;
    maps.create(1, 1, 1, box(4, 6, 8, 2));
    NRVMPsHeader header{};
    maps.describe(header);
    EXPECT_THAT(header.boundingBox, testing::ElementsAre(0, 4, 0, 6, 0, 8));
    EXPECT_EQ(header.resolution, 2);
}

TEST(VolumeMaps, ThereIsNoneBeyondTheLastMap) {
    VolumeMaps maps;
    maps.create(1, 1, 1, box(2, 2, 2, 1));
    NRVMPMap record{};
    EXPECT_EQ(maps.describe(1, record), nullptr);
    EXPECT_EQ(maps.describe(-1, record), nullptr);
    EXPECT_EQ(record.name, nullptr);
}

TEST(VolumeMaps, CreatingAndClearingRemoveTheOldOnes) {
    VolumeMaps maps;
    maps.create(3, 1, 1, box(2, 2, 2, 1));
    maps.create(1, 1, 1, box(2, 2, 2, 1));
    EXPECT_EQ(maps.maps().size(), 1U);
    maps.clear();
    EXPECT_TRUE(maps.maps().empty());
}

TEST(VolumeMaps, AnEmptyBoxIsRefused) {
    VolumeMaps maps;
    EXPECT_THROW(maps.create(1, 1, 1, box(2, 2, 2, 0)), std::invalid_argument);
    EXPECT_THROW(maps.create(1, 1, 1, box(2, 0, 2, 1)), std::invalid_argument);
    EXPECT_THROW(maps.create(-1, 1, 1, box(2, 2, 2, 1)), std::invalid_argument);
}

} // namespace
} // namespace zn::test
