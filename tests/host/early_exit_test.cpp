// Every way in which a run ends before its components are found: what the user is told, in which order, and what
// `execute` returns.

#include "host/has_form.h"
#include "host/host_fixture.h"

#include <limits>

namespace zn::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

class EarlyExit : public HostFixture {
protected:
    // The last calls of a run, `count` of them.
    std::vector<std::string> lastCalls(std::ptrdiff_t count) const {
        EXPECT_GE(std::ssize(host.calls), count);
        return {host.calls.end() - count, host.calls.end()};
    }
};

constexpr char kMemoryBox[] = "znMessageBox(Working memory full. Exiting plugin.)";
constexpr char kMemoryLog[] = "znLogText(// Plugin > Working memory full. Exiting plugin.)";

TEST_F(EarlyExit, WithoutAnAnatomicalVolume) {
    host.hasVmr = false;
    EXPECT_FALSE(run());
    EXPECT_THAT(host.calls, ElementsAre("znGetCurrentVMR()", "znLogText(// Plugin>  Could not get VMR!)"));
}

TEST_F(EarlyExit, WithoutAVtcNameOpensTheDialogBeforeReadingFurtherNames) {
    host.dialogStrings[0] = "";
    EXPECT_FALSE(run());
    EXPECT_THAT(host.calls, ElementsAre("znGetCurrentVMR()", "znGetDlgStringParameter(0)", "znLaunchICADialog()"));
}

TEST_F(EarlyExit, WithoutAnOutputNameOpensTheDialog) {
    host.dialogStrings[2] = "";
    EXPECT_FALSE(run());
    EXPECT_THAT(host.calls, ElementsAre("znGetCurrentVMR()", "znGetDlgStringParameter(0)", "znGetDlgStringParameter(1)",
                                        "znGetDlgStringParameter(2)", "znLaunchICADialog()"));
}

TEST_F(EarlyExit, WhenTheVtcCannotBeLinked) {
    host.linksVtc = false;
    EXPECT_TRUE(run());
    EXPECT_THAT(lastCalls(3), ElementsAre("znLinkVTCToCurrentVMR(run1.vtc, 1)", kMemoryBox, kMemoryLog));
    EXPECT_THAT(host.calls, Not(Contains("znStopBusyCursor()"))); // it has not been shown yet
}

TEST_F(EarlyExit, WhenTheMaskCannotBeLoaded) {
    host.dialogStrings[1] = "brain.msk";
    host.loadsMask = false;
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(3),
                ElementsAre("znLoadMaskToCurrentVMR(brain.msk)",
                            "znMessageBox(This mask does not fit the current VTC resolution or bounding box!\n"
                            "Please keep the VTC linked to the current VMR or SRF before creating a VTC mask.)",
                            "znLogText(// Plugin> Wrong mask provided. Exiting plugin.)"));
}

TEST_F(EarlyExit, WhenTheLoadedMaskCannotBeFetched) {
    host.dialogStrings[1] = "brain.msk";
    EXPECT_FALSE(run());
    EXPECT_EQ(lastCalls(3).front(), "znGetMaskOfCurrentVMR()");
    EXPECT_THAT(host.log(), ElementsAre("// Plugin> Wrong mask provided. Exiting plugin."));
}

TEST_F(EarlyExit, WithoutAVtc) {
    host.header.validity = -1;
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(2),
                ElementsAre("znGetHeaderOfVTCOfCurrentVMR()", "znLogText(// Plugin>  Could not get VTC!)"));
}

TEST_F(EarlyExit, WithAVtcWithoutVolumes) {
    host.header.volumes = 0;
    EXPECT_FALSE(run());
    EXPECT_THAT(host.log(), ElementsAre("// Plugin>  Could not get VTC!"));
}

TEST_F(EarlyExit, WhenTheHostHandsOutNoData) {
    host.floats.clear();
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(3), ElementsAre("znGetVTCFloatDataOfCurrentVMR()", "znStopBusyCursor()",
                                          "znLogText(// Plugin>  Could not get VTC!)"));
}

TEST_F(EarlyExit, WithoutASelectedVoxel) {
    host.dialogStrings[1] = "empty.msk";
    host.mask.emplace(240, static_cast<unsigned char>(0));
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(4), ElementsAre("znLogText(// Plugin>  Number of used VTC voxels: 0)", "znStopBusyCursor()",
                                          "znMessageBox(No voxels selected in the current VTC!)",
                                          "znLogText(// Plugin> No voxels selected in the current VTC!)"));
}

TEST_F(EarlyExit, WithABoundingBoxSmallerThanOneVoxel) {
    host.header.xEnd = host.header.xStart + 2; // resolution 3
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("No voxels selected in the current VTC!"));
}

TEST_F(EarlyExit, WithABoundingBoxSmallerThanOneVoxelOnAnotherAxis) {
    host.header.yEnd = host.header.yStart + 2;
    EXPECT_FALSE(run());
    host.setGrid(8, 6, 5);
    host.header.zEnd = host.header.zStart + 2;
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("No voxels selected in the current VTC!"));
}

// The number of voxels is the product of the three differences, whatever their signs.
TEST_F(EarlyExit, WithABoundingBoxThatRunsBackwardsAlongAnAxis) {
    host.header.xEnd = host.header.xStart - 3 * 4;
    EXPECT_FALSE(run());
    EXPECT_THAT(
        lastCalls(4),
        ElementsAre("znLogText(// Plugin>  Number of used VTC voxels: -120)", "znStopBusyCursor()",
                    "znMessageBox(Too few voxels (less than number of time points) selected in the current VTC!)",
                    "znLogText(// Plugin> Too few voxels (less than number of time points) selected in the "
                    "current VTC!)"));
}

// 120 voxels by the product, none of which a scan meets: there is nothing to find.
TEST_F(EarlyExit, WithABoundingBoxThatRunsBackwardsAlongTwoAxes) {
    host.header.xEnd = host.header.xStart - 3 * 4;
    host.header.yEnd = host.header.yStart - 3 * 6;
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  Number of used VTC voxels: 120"));
    EXPECT_EQ(host.log().back(), "// Plugin>  No components found. Exiting plugin.");
}

TEST_F(EarlyExit, WithABackwardBoundingBoxAndAMaskThatNoScanMeets) {
    host.dialogStrings[1] = "brain.msk";
    host.mask = std::vector<unsigned char>(8 * 6 * 5, 1);
    host.header.zEnd = host.header.zStart - 3;
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("No voxels selected in the current VTC!"));
}

TEST_F(EarlyExit, WithAnImpossibleResolution) {
    for (int resolution : {0, -1, std::numeric_limits<int>::min()}) {
        host.header.resolution = resolution;
        EXPECT_FALSE(run());
        EXPECT_THAT(host.boxes(), ElementsAre("No voxels selected in the current VTC!")) << resolution;
    }
}

TEST_F(EarlyExit, WithOneVoxelFewerThanVolumes) {
    host.dialogStrings[1] = "small.msk";
    host.mask.emplace(240, static_cast<unsigned char>(0));
    std::fill_n(host.mask->begin() + 100, 11, static_cast<unsigned char>(1));
    EXPECT_FALSE(run());
    EXPECT_THAT(
        lastCalls(4),
        ElementsAre("znLogText(// Plugin>  Number of used VTC voxels: 11)", "znStopBusyCursor()",
                    "znMessageBox(Too few voxels (less than number of time points) selected in the current VTC!)",
                    "znLogText(// Plugin> Too few voxels (less than number of time points) selected in the current "
                    "VTC!)"));
}

TEST_F(EarlyExit, WithOneVoxelMoreThanFiveMillion) {
    host.header.volumes = 1;
    host.setGrid(5'000'001, 1, 1);
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(4),
                ElementsAre("znLogText(// Plugin>  Number of used VTC voxels: 5000001)", "znStopBusyCursor()",
                            "znMessageBox(Too many voxels selected in the current VTC!)",
                            "znLogText(// Plugin> Too many voxels selected in the current VTC. Exiting "
                            "plugin.)"));
}

TEST_F(EarlyExit, WithABoundingBoxThatOverflowsTheVoxelCount) {
    host.header.resolution = 1;
    host.header.xStart = host.header.yStart = host.header.zStart = std::numeric_limits<int>::min();
    host.header.xEnd = host.header.yEnd = host.header.zEnd = std::numeric_limits<int>::max();
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("Too many voxels selected in the current VTC!"));
}

TEST_F(EarlyExit, WithNaNInTheData) {
    host.floats[100] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE(run());
    EXPECT_THAT(lastCalls(3),
                ElementsAre("znStopBusyCursor()", "znMessageBox(Too many iterations in routine jacobi)",
                            "znLogText(// Plugin> Too many iterations in routine jacobi. Exiting plugin.)"));
}

TEST_F(EarlyExit, WithInfinityInTheDataLeavesAHostThatCanRunAgain) {
    const float kept = host.floats[7];
    host.floats[7] = std::numeric_limits<float>::infinity();
    EXPECT_FALSE(run());
    EXPECT_THAT(host.boxes(), ElementsAre("Too many iterations in routine jacobi"));
    EXPECT_FALSE(host.isBusy());

    host.floats[7] = kept;
    EXPECT_TRUE(run());
    EXPECT_EQ(host.log().back(), " ");
}

TEST_F(EarlyExit, WithMoreElementsThanAnArrayCanCount) {
    // 2,200,000 voxels x 1000 volumes exceed 2^31 - 1 elements; the host's data are never touched.
    host.setGrid(2'200'000, 1, 1);
    host.header.volumes = 1000;
    EXPECT_TRUE(run());
    EXPECT_THAT(lastCalls(3), ElementsAre("znStopBusyCursor()", kMemoryBox, kMemoryLog));
}

TEST_F(EarlyExit, WhenNoIterationIsAllowed) {
    host.dialogIntegers[8] = 0;
    EXPECT_TRUE(run());
    std::vector<std::string> lines = host.log();
    const auto start =
        std::find(lines.begin(), lines.end(), "// Plugin>  Running FastICA computation (deflation approach)...");
    ASSERT_NE(start, lines.end());
    lines.erase(lines.begin(), start + 1);
    ASSERT_EQ(lines.size(), 7U);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_THAT(lines[i],
                    HasForm("// Plugin>  IC #: 1  Number of Iterations: 0 (restarting) (elapsed time: ~ secs)"));
    }
    EXPECT_EQ(lines[5], "// Plugin>  Too many failures to converge....giving up!");
    EXPECT_EQ(lines[6], "// Plugin>  No components found. Exiting plugin.");
    EXPECT_THAT(lastCalls(3),
                ElementsAre("znStopBusyCursor()", "znLogText(// Plugin>  No components found. Exiting plugin.)",
                            "znUpdateActiveWindow()"));
    EXPECT_THAT(host.boxes(), IsEmpty());
}

TEST_F(EarlyExit, WhenTheDialogSwitchesFastIcaOff) {
    host.dialogIntegers[0] = 0;
    EXPECT_TRUE(run());
    EXPECT_THAT(lastCalls(3),
                ElementsAre("znStopBusyCursor()", "znLogText(// Plugin>  No components found. Exiting plugin.)",
                            "znUpdateActiveWindow()"));
    EXPECT_THAT(host.log(), Not(Contains("// Plugin>  Running FastICA computation (deflation approach)...")));
}

TEST_F(EarlyExit, WithEigenvaluesBeyondTheLastOneGivesUpAndSparesTheHost) {
    host.dialogIntegers[6] = 10;
    host.dialogIntegers[7] = 15; // 12 volumes have 12 eigenvalues
    host.dialogIntegers[9] = 6;
    EXPECT_TRUE(run());
    EXPECT_THAT(host.log(), Contains("// Plugin>  Too many failures to converge....giving up!"));
    EXPECT_EQ(host.log().back(), "// Plugin>  No components found. Exiting plugin.");
}

TEST_F(EarlyExit, WithEigenvaluesBeforeTheFirstOneGivesUpAndSparesTheHost) {
    host.dialogIntegers[6] = -2;
    host.dialogIntegers[7] = 2;
    EXPECT_TRUE(run());
    EXPECT_EQ(host.log().back(), "// Plugin>  No components found. Exiting plugin.");
}

TEST_F(EarlyExit, NeverLeavesTheBusyCursorOn) {
    host.dialogIntegers[8] = 0;
    run();
    EXPECT_FALSE(host.isBusy());
}

} // namespace
} // namespace zn::test
