// A plug-in that ends early or fails: the user sees its message, and no result is left.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class EarlyEnd : public testing::Test {
protected:
    EarlyEnd() { writeFile(folder / "bold.nii", plainSeries(24).bytes()); }

    std::vector<std::string> arguments() {
        return {"run",           (folder / "bold.nii").string(), "--out", (folder / "out").string(), "--plugin",
                FAKE_PLUGIN_FILE};
    }
    CommandResult runAs(const std::string& behaviour) {
        return znica(arguments(), {{}, {"ZN_FAKE_PLUGIN=" + behaviour}, {}});
    }
    void expectNothingLeft() { EXPECT_THAT(namesIn(folder.path()), ElementsAre("bold.nii")); }

    TemporaryFolder folder;
};

TEST_F(EarlyEnd, TheUserSeesTheLastMessageBox) {
    const CommandResult result = runAs("message");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "znica: the plug-in ended the analysis: The data are not to my taste.\n");
    expectNothingLeft();
}

TEST_F(EarlyEnd, AMissingMessageIsReported) {
    const CommandResult result = runAs("silence");
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "znica: the plug-in ended the analysis: it gave no reason.\n");
    expectNothingLeft();
}

TEST_F(EarlyEnd, SuccessWithoutMapsIsAFailure) {
    EXPECT_EQ(runAs("no maps").status, 3);
    expectNothingLeft();
}

TEST_F(EarlyEnd, OutOfMemoryHasItsOwnStatus) {
    const CommandResult result = runAs("memory");
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.err, HasSubstr("Working memory full. Exiting plugin."));
    expectNothingLeft();
}

TEST_F(EarlyEnd, NoComponentAtAllCountsAsGivenUp) {
    const CommandResult result = runAs("none found");
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(result.err, HasSubstr("no component converged"));
    expectNothingLeft();
}

TEST_F(EarlyEnd, APluginThatRefusesToStartSaysWhy) {
    const CommandResult result = runAs("refuse to start");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "znica: the plug-in did not start: No licence for Mondays.\n");
    expectNothingLeft();
}

TEST_F(EarlyEnd, APluginThatEndsTheProcessLeavesNoUnfinishedFolder) {
    EXPECT_EQ(runAs("exit").status, 1);
    expectNothingLeft();
}

TEST_F(EarlyEnd, TheFilesOfAFailedRunAreKeptOnRequestAndMarkedPartial) {
    auto keeping = arguments();
    keeping.push_back("--keep-partial");
    const CommandResult result = znica(keeping, {{}, {"ZN_FAKE_PLUGIN=message"}, {}});
    EXPECT_EQ(result.status, 3);
    const std::string start = "znica: the plug-in ended the analysis: The data are not to my taste. "
                              "The partial files are in ";
    ASSERT_TRUE(result.err.starts_with(start)) << result.err;
    const std::filesystem::path kept = result.err.substr(start.size(), result.err.size() - start.size() - 2);
    EXPECT_EQ(kept.parent_path(), folder.path());
    EXPECT_THAT(namesIn(kept), ElementsAre("bold_desc-brain_mask.nii.gz", "bold_desc-mean_bold.nii.gz", "log.txt",
                                           "plugin", "status.json"));
    EXPECT_THAT(textOf(kept / "status.json"), HasSubstr("\"partial\": true"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

TEST_F(EarlyEnd, AFailedRunDoesNotTouchAnEarlierResult) {
    std::filesystem::create_directory(folder / "out");
    writeFile(folder / "out/log.txt", "earlier");
    writeFile(folder / "out/dataset_description.json", R"({"GeneratedBy": [{"Name": "znica"}]})");
    auto withForce = arguments();
    withForce.push_back("--force");
    EXPECT_EQ(znica(withForce, {{}, {"ZN_FAKE_PLUGIN=silence"}, {}}).status, 3);
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("dataset_description.json", "log.txt"));
    EXPECT_EQ(textOf(folder / "out/log.txt"), "earlier");
}

} // namespace
} // namespace zn::test
