// File names and folders as users have them.

#include "host/host_fixture.h"
#include "host/host_path.h"

#include <fstream>

namespace zn::test {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;

class RunPaths : public HostFixture {};

TEST_F(RunPaths, MayContainBlanksAndThePlatformsSeparators) {
    fs::create_directories("my study/first run");
    const fs::path folder = (fs::path("my study") / "first run").make_preferred();
    host.dialogStrings[0] = (folder / "a scan.vtc").string();
    EXPECT_TRUE(run());
    EXPECT_TRUE(fs::exists(folder / "a scan.eig"));
    EXPECT_TRUE(fs::exists(folder / "a scan_ICA.rtc"));
    EXPECT_THAT(host.argumentsOf("znLinkVTCToCurrentVMR"), ElementsAre(host.dialogStrings[0] + ", 1"));
}

TEST_F(RunPaths, MayBeAbsolute) {
    host.dialogStrings[0] = (directory.path() / "scan.vtc").string();
    EXPECT_TRUE(run());
    EXPECT_TRUE(fs::exists("scan.eig"));
    EXPECT_TRUE(fs::exists("scan_ICA.rtc"));
}

TEST_F(RunPaths, MayContainNonAsciiCharacters) {
    host.dialogStrings[0] = "G\xFCnther \xE9t\xE9.vtc"; // u with diaeresis, e with acute accent in code page 1252
    host.dialogStrings[2] = "G\xFCnther.ica";
    EXPECT_TRUE(run());
    EXPECT_TRUE(fs::exists(hostPath("G\xFCnther \xE9t\xE9.eig")));
    EXPECT_TRUE(fs::exists(hostPath("G\xFCnther \xE9t\xE9_ICA.rtc")));
    EXPECT_THAT(host.argumentsOf("znSaveNRVMPsOfCurrentVMR"), ElementsAre("G\xFCnther.ica"));
}

TEST_F(RunPaths, BesideTheVtcAreWrittenEvenIfTheCurrentFolderIsReadOnly) {
    host.dialogStrings[0] = (directory.path() / "scan.vtc").string();
    fs::current_path(ZN_UNWRITABLE_FOLDER);
    ASSERT_FALSE(std::ofstream("ICA.vox")) << "no test in a folder that takes files";
    EXPECT_TRUE(run());
    EXPECT_EQ(host.log().back(), " ");
    EXPECT_EQ(host.maps.size(), 3U);
    EXPECT_TRUE(fs::exists(directory.path() / "scan.eig"));
    EXPECT_TRUE(fs::exists(directory.path() / "scan_ICA.rtc"));
}

} // namespace
} // namespace zn::test
