// What a plug-in receives from the options and files of a run.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::HasSubstr;

class HostContract : public testing::Test {
protected:
    // The output of the fake plug-in, which echoes what it receives.
    std::string echoed(const NiftiBytes& image, const std::vector<std::string>& options = {},
                       const std::string& behaviour = "echo") {
        writeFile(folder / "sub-01_task-rest_bold.nii", image.bytes());
        std::vector<std::string> arguments = {"run",
                                              "--as-is",
                                              (folder / "sub-01_task-rest_bold.nii").string(),
                                              "--out",
                                              (folder / "out").string(),
                                              "--plugin",
                                              FAKE_PLUGIN_FILE,
                                              "--verbose"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments, {{}, {"ZN_FAKE_PLUGIN=" + behaviour}, {}}).out;
    }

    TemporaryFolder folder;
};

// x-fastest volumes: voxel (x, y, z) of volume t holds 1000 t + 100 z + 10 y + x.
NiftiBytes numbered(int volumes) {
    NiftiBytes image;
    image.dim[4] = static_cast<std::int16_t>(volumes);
    for (int t = 0; t < volumes; ++t) {
        for (int z = 0; z < 4; ++z) {
            for (int y = 0; y < 5; ++y) {
                for (int x = 0; x < 6; ++x) image.append(static_cast<std::int16_t>(1000 * t + 100 * z + 10 * y + x));
            }
        }
    }
    return image;
}

TEST_F(HostContract, DefaultsOfTheDialog) {
    const std::string out = echoed(plainSeries(24));
    EXPECT_THAT(out, HasSubstr("text 0 [sub-01_task-rest_bold.vtc]\ntext 1 [mask.msk]\n"
                               "text 2 [sub-01_task-rest_bold_ica.vmp]\ntext 3 []\ntext 4 []\n"));
    EXPECT_THAT(out, HasSubstr("integer 0 [1]\n")); // run FastICA
    EXPECT_THAT(out, HasSubstr("integer 3 [0]\n")); // neither of the two switches: tanh
    EXPECT_THAT(out, HasSubstr("integer 5 [0]\n"));
    EXPECT_THAT(out, HasSubstr("integer 6 [1]\ninteger 7 [20]\ninteger 8 [500]\ninteger 9 [20]\n"));
    EXPECT_THAT(out, HasSubstr("float 0 [0.0001]\n"));
    EXPECT_THAT(out, HasSubstr("prompts 10 2.5 0 []\n"));
}

TEST_F(HostContract, OptionsReachTheDialogAndThePrompts) {
    const std::string out = echoed(plainSeries(24), {"--eigenvalues", "3:9", "--nonlinearity", "gauss", "--epsilon",
                                                     "0.01", "--max-iterations", "77", "--cluster-size", "25",
                                                     "--z-threshold", "3.5", "--label", "S01"});
    EXPECT_THAT(out, HasSubstr("integer 3 [1]\n"));
    EXPECT_THAT(out, HasSubstr("integer 5 [0]\n"));
    EXPECT_THAT(out, HasSubstr("integer 6 [3]\ninteger 7 [9]\ninteger 8 [77]\ninteger 9 [7]\n"));
    EXPECT_THAT(out, HasSubstr("float 0 [0.01]\n"));
    EXPECT_THAT(out, HasSubstr("prompts 25 3.5 1 [S01]\n"));
}

TEST_F(HostContract, TheCubeIsTheFirstSwitch) {
    EXPECT_THAT(echoed(plainSeries(24), {"--nonlinearity", "cube"}), HasSubstr("integer 5 [1]\n"));
}

TEST_F(HostContract, NoClusteringCancelsThePromptForTheClusterSize) {
    EXPECT_THAT(echoed(plainSeries(24), {"--no-clustering"}),
                HasSubstr("prompts 1 2.5 0 []\n")); // below the minimum of 2
}

TEST_F(HostContract, SixteenBitDataArriveWithVolumesContiguous) {
    const std::string out = echoed(numbered(4), {"--components", "2"});
    EXPECT_THAT(out, HasSubstr("vtc volumes 4 tr 2000 box 0 6 0 5 0 4 resolution 1 type 1 "
                               "name sub-01_task-rest_bold.vtc\n"));
    // Voxel (0, 0, 0) at volumes 0 to 3, then voxel (1, 0, 0) at volumes 0 and 1.
    EXPECT_THAT(out, HasSubstr("short 0 0\nshort 1 1000\nshort 2 2000\nshort 3 3000\nshort 4 1\nshort 5 1001\n"));
}

TEST_F(HostContract, ScaledDataArriveAsFloats) {
    NiftiBytes image = numbered(4);
    image.slope = 0.5f;
    image.inter = 10.0f;
    const std::string out = echoed(image, {"--components", "2"});
    EXPECT_THAT(out, HasSubstr(" type 2 "));
    EXPECT_THAT(out, HasSubstr("float 0 10\nfloat 1 510\nfloat 2 1010\nfloat 3 1510\nfloat 4 10.5\nfloat 5 510.5\n"));
}

TEST_F(HostContract, ASlopeOfOneDoesNotScale) {
    NiftiBytes image = numbered(4);
    image.slope = 1.0f;
    EXPECT_THAT(echoed(image, {"--components", "2"}), HasSubstr("short 1 1000\n"));
}

TEST_F(HostContract, BigEndianDataAreSwapped) {
    NiftiBytes image;
    image.bigEndian = true;
    image.dim[4] = 4;
    for (int i = 0; i < 6 * 5 * 4 * 4; ++i) image.append(static_cast<std::int16_t>(i));
    const std::string out = echoed(image, {"--components", "2"});
    EXPECT_THAT(out, HasSubstr("short 0 0\nshort 1 120\nshort 2 240\nshort 3 360\n"));
    EXPECT_THAT(out, HasSubstr(" tr 2000 "));
}

TEST_F(HostContract, TheTimeBetweenVolumesFollowsItsUnit) {
    NiftiBytes image = plainSeries(24);
    image.pixdim[4] = 1500;
    image.units = 2 | 16; // milliseconds
    EXPECT_THAT(echoed(image), HasSubstr(" tr 1500 "));
    image.pixdim[4] = 1.5f;
    image.units = 2; // no unit of time: seconds
    EXPECT_THAT(echoed(image), HasSubstr(" tr 1500 "));
    EXPECT_THAT(echoed(image, {"--tr", "0.72"}), HasSubstr(" tr 720 "));
}

TEST_F(HostContract, RegionsAreTheLabelsInAscendingOrderInTheHostsCoordinates) {
    NiftiBytes labels = plainMask();
    labels.data.assign(labels.data.size(), '\0');
    labels.data[0] = 9;                   // voxel (0, 0, 0)
    labels.data[5 + 6 * (4 + 5 * 3)] = 2; // voxel (5, 4, 3)
    writeFile(folder / "labels.nii", labels.bytes());
    const std::string out = echoed(plainSeries(24), {"--rois", (folder / "labels.nii").string()});
    EXPECT_THAT(out, HasSubstr("regions 2 space 3\n"));
    EXPECT_THAT(out, HasSubstr("region 0: 125 123 124\n")); // (128 - z, 128 - x, 128 - y)
    EXPECT_THAT(out, HasSubstr("region 1: 128 128 128\n"));
}

// Another plug-in may know no more of the records than the contract names, and give longer names than ours does.
TEST_F(HostContract, ShortRecordsAndLongNamesAreEnough) {
    NiftiBytes labels = plainMask();
    writeFile(folder / "labels.nii", labels.bytes());
    const std::string out =
        echoed(plainSeries(24), {"--components", "2", "--rois", (folder / "labels.nii").string()}, "small records");
    EXPECT_THAT(out, HasSubstr("small volumes 24 name sub-01_task-rest_bold.vtc\n"));
    EXPECT_THAT(out, HasSubstr("small regions 1 voxels 120\n"));
    EXPECT_THAT(out, HasSubstr("2 of 2 components found"));
    EXPECT_THAT(textOf(folder / "out/sub-01_task-rest_desc-ICA_decomposition.json"),
                HasSubstr("\"PluginName\": \"" + std::string(269, 'x') + "\""));
}

TEST_F(HostContract, AnUnavailableFunctionIsReportedOnce) {
    const std::string out = echoed(plainSeries(24), {}, "unavailable");
    const std::string line = "znica: znPlotBars is not available in this host\n";
    const std::size_t first = out.find(line);
    ASSERT_NE(first, std::string::npos) << out;
    EXPECT_EQ(out.find(line, first + 1), std::string::npos);
}

} // namespace
} // namespace zn::test
