#include "headless/nifti/write_series.h"

#include "files.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/time_series.h"

#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// As many volumes as are written together, one more, and several times as many.
TEST(WrittenSeries, ReadBackAsTheyWere) {
    const TemporaryFolder folder;
    ImageHeader like;
    like.size = {7, 5, 3};
    const auto grid = newGrid(like.size, 2.5);
    std::strcpy(grid->descrip, "as scanned");
    like.image = grid;
    for (const int volumes : {1, 16, 17, 50}) {
        std::vector<float> series(static_cast<std::size_t>(105 * volumes));
        std::iota(series.begin(), series.end(), -20.5f);
        writeSeries(folder / "s.nii.gz", series.data(), volumes, like, 1.5);
        const ImageHeader header = readImageHeader(folder / "s.nii.gz");
        EXPECT_EQ(header.volumes, volumes);
        EXPECT_EQ(header.size, like.size);
        EXPECT_STREQ(header.image->descrip, "as scanned");
        const TimeSeries read = readTimeSeries(header);
        EXPECT_EQ(std::vector<float>(read.floats.get(), read.floats.get() + series.size()), series) << volumes;
        if (volumes > 1) {
            EXPECT_EQ(header.secondsPerVolume, 1.5);
        }
    }
}

TEST(WrittenSeries, HaveNothingOfAnotherDescriptionBehindTheirOwn) {
    const TemporaryFolder folder;
    const auto grid = newGrid({2, 1, 1}, 1.0);
    std::memset(grid->descrip, 'x', sizeof grid->descrip - 1);
    ImageWriter writer(folder / "m.nii", *grid, {1, NIFTI_TYPE_UINT8, 0.0, "mask"});
    const std::vector<unsigned char> voxels = {0, 1};
    writer.write(voxels);
    writer.close();
    EXPECT_EQ(textOf(folder / "m.nii").substr(148, 80), "mask" + std::string(76, '\0')); // the field of NIfTI-1
}

} // namespace
} // namespace zn::test
