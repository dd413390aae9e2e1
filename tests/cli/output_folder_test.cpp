// The result folder: complete or not at all, and never in place of something else.
#include "cli/command.h"
#include "files.h"

#include <algorithm>
#include <cstdlib>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class OutputFolder : public testing::Test {
protected:
    CommandResult simulate(const std::string& out, const std::vector<std::string>& options = {},
                           const Surroundings& surroundings = {}) {
        std::vector<std::string> arguments = {"simulate", "--size", "tiny", "--sources", "1", "--out", out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments, surroundings);
    }

    TemporaryFolder folder;
};

TEST_F(OutputFolder, IsCreatedWithItsParents) {
    EXPECT_EQ(simulate((folder / "a/b/c").string()).status, 0);
    EXPECT_THAT(namesIn(folder / "a/b"), ElementsAre("c"));
}

TEST_F(OutputFolder, MayBeRelativeWithATrailingSlash) {
    EXPECT_EQ(simulate("here/", {}, {folder.path(), {}, {}}).status, 0);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("here"));
}

TEST_F(OutputFolder, MayBeTheCurrentOneInAnyNotation) {
    for (const std::string out : {".", "./", "x/..", "../here/."}) {
        std::filesystem::create_directories(folder / "here");
        const CommandResult result = simulate(out, {}, {folder / "here", {}, {}});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_THAT(namesIn(folder.path()), ElementsAre("here"));
        EXPECT_TRUE(std::filesystem::exists(folder / "here/truth.json"));
        std::filesystem::remove_all(folder / "here");
    }
}

// A shell stays in its current folder, so that folder must not be replaced.
TEST_F(OutputFolder, ThatIsTheCurrentOneKeepsItsInode) {
    std::filesystem::create_directory(folder / "here");
    struct stat before {};
    struct stat after {};
    stat((folder / "here").c_str(), &before);
    ASSERT_EQ(simulate(".", {}, {folder / "here", {}, {}}).status, 0);
    const std::vector<std::string> names = namesIn(folder / "here");
    const CommandResult again = simulate(".", {"--seed", "2", "--force"}, {folder / "here", {}, {}});
    EXPECT_EQ(again.status, 0) << again.err;
    stat((folder / "here").c_str(), &after);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(namesIn(folder / "here"), names);
    EXPECT_THAT(textOf(folder / "here/truth.json"), HasSubstr("\"seed\": 2"));
}

TEST_F(OutputFolder, MayBeTheTargetOfALink) {
    std::filesystem::create_directory(folder / "target");
    std::filesystem::create_directory_symlink("target", folder / "link");
    EXPECT_EQ(simulate((folder / "link").string()).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
    EXPECT_TRUE(std::filesystem::exists(folder / "target/truth.json"));
}

// As when a folder of the host is mounted into a container.
TEST_F(OutputFolder, MayBeAMountPoint) {
    std::filesystem::create_directory(folder / "disk");
    std::filesystem::create_directory(folder / "out");
    const std::string mount = "mount --bind " + (folder / "disk").string() + " " + (folder / "out").string();
    if (std::system(("unshare -rm sh -c '" + mount + "' 2>/dev/null").c_str()) != 0) GTEST_SKIP() << "no mounts here";
    const auto simulateThere = [&](const std::vector<std::string>& options) {
        return simulate((folder / "out").string(), options,
                        {{}, {}, "exec unshare -rm sh -c '" + mount + " && exec \"$0\" \"$@\"' \"$0\" \"$@\";"});
    };
    const CommandResult result = simulateThere({});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(textOf(folder / "disk/truth.json"), HasSubstr("\"seed\": 1"));
    const std::vector<std::string> names = namesIn(folder / "disk");
    EXPECT_EQ(simulateThere({"--seed", "2"}).status, 1);
    EXPECT_EQ(simulateThere({"--seed", "2", "--force"}).status, 0);
    EXPECT_THAT(textOf(folder / "disk/truth.json"), HasSubstr("\"seed\": 2"));
    EXPECT_EQ(namesIn(folder / "disk"), names);
    EXPECT_THAT(namesIn(folder / "out"), IsEmpty());
}

TEST_F(OutputFolder, WithAnEmptyNameIsWrongUsage) {
    const CommandResult result = simulate("");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "znica: --out is empty; name a folder.\n");
}

TEST_F(OutputFolder, MayExistIfEmpty) {
    std::filesystem::create_directory(folder / "out");
    EXPECT_EQ(simulate((folder / "out").string()).status, 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "out/truth.json"));
}

TEST_F(OutputFolder, WithAResultIsNotOverwrittenWithoutForce) {
    ASSERT_EQ(simulate((folder / "out").string()).status, 0);
    const std::string before = textOf(folder / "out/truth.json");
    const CommandResult again = simulate((folder / "out").string(), {"--seed", "2"});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, HasSubstr("exists and is not empty"));
    EXPECT_EQ(textOf(folder / "out/truth.json"), before);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out"));
}

TEST_F(OutputFolder, IsReplacedCompletelyByForce) {
    ASSERT_EQ(simulate((folder / "out").string()).status, 0);
    EXPECT_EQ(simulate((folder / "out").string(), {"--seed", "2", "--force"}).status, 0);
    EXPECT_THAT(textOf(folder / "out/truth.json"), HasSubstr("\"seed\": 2"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out"));
}

TEST_F(OutputFolder, WithOtherContentIsRefusedDespiteForce) {
    std::filesystem::create_directory(folder / "out");
    writeFile(folder / "out/thesis.tex", "ten years of work");
    const CommandResult result = simulate((folder / "out").string(), {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("thesis.tex"));
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("thesis.tex"));
}

TEST_F(OutputFolder, WithAUserFileNamedLikeTheSampleIsRefusedDespiteForce) {
    ASSERT_EQ(simulate((folder / "out").string()).status, 0);
    writeFile(folder / "out/sub-sim_notes.txt", "precious");
    const CommandResult result = simulate((folder / "out").string(), {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("holds sub-sim_notes.txt, which does not belong to a result"));
    EXPECT_EQ(textOf(folder / "out/sub-sim_notes.txt"), "precious");
}

TEST_F(OutputFolder, WithNamesOfAResultButNoRecordIsRefusedDespiteForce) {
    std::filesystem::create_directories(folder / "out/plugin");
    writeFile(folder / "out/log.txt", "a log of something else");
    const CommandResult result = simulate((folder / "out").string(), {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("has no dataset_description.json that names znica"));
    EXPECT_THAT(namesIn(folder / "out"), ElementsAre("log.txt", "plugin"));
}

TEST_F(OutputFolder, WithAPipeInPlaceOfTheRecordIsRefusedWithoutWaiting) {
    std::filesystem::create_directory(folder / "out");
    ASSERT_EQ(mkfifo((folder / "out/dataset_description.json").c_str(), 0600), 0);
    const CommandResult result = simulate((folder / "out").string(), {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("has no dataset_description.json that names znica"));
}

TEST_F(OutputFolder, ThatIsAFileIsRefused) {
    writeFile(folder / "out", "");
    const CommandResult result = simulate((folder / "out").string());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("is not a folder"));
}

TEST_F(OutputFolder, ThatCannotBeCreatedIsRefused) {
    const CommandResult result = simulate("/proc/nowhere/out");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::StartsWith("znica: /proc/nowhere cannot be created: "));
}

// A file size limit makes a write fail half-way, as a full disk does.
TEST_F(OutputFolder, OnAFullDiskLeavesNothing) {
    const CommandResult result = simulate((folder / "x/out").string(), {}, {{}, {}, "ulimit -f 100;"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "znica: " + (folder / "x/out/sub-sim_task-blocks_bold.nii.gz").string() +
                              " cannot be written; check the permissions and the free disk space.\n");
    EXPECT_THAT(namesIn(folder.path()), IsEmpty());
}

class OutputFolderOfARun : public OutputFolder {
protected:
    OutputFolderOfARun() {
        EXPECT_EQ(simulate((folder / "s").string()).status, 0);
        EXPECT_EQ(run("out", {}).status, 0);
    }
    CommandResult run(const std::string& out, const std::vector<std::string>& options,
                      const Surroundings& surroundings = {}) {
        std::vector<std::string> arguments = {"run",    (folder / "s/sub-sim_task-blocks_bold.nii.gz").string(),
                                              "--seed", "1",
                                              "--out",  out.front() == '/' ? out : (folder / out).string()};
        if (std::find(options.begin(), options.end(), "--components") == options.end()) {
            arguments.insert(arguments.end(), {"--components", "2"});
        }
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments, surroundings);
    }
};

TEST_F(OutputFolderOfARun, IsOverwrittenOnlyWithForce) {
    const std::string before = textOf(folder / "out/log.txt");
    const CommandResult again = run("out", {});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, HasSubstr("exists and is not empty"));
    EXPECT_EQ(textOf(folder / "out/log.txt"), before);
    EXPECT_EQ(run("out", {"--force"}).status, 0);
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out", "s"));
}

TEST_F(OutputFolderOfARun, WithEveryFileThatARunMayWriteIsReplacedByForce) {
    const std::vector<std::string> everything = {
        "--components", "auto",
        "--repeats",    "2",
        "--design",     (folder / "s/sub-sim_task-blocks_desc-task_design.tsv").string()};
    ASSERT_EQ(run("complete", everything).status, 0);
    ASSERT_TRUE(std::filesystem::exists(folder / "complete/sub-sim_task-blocks_desc-ICA_dimension.tsv"));
    const CommandResult again = run("complete", {"--force"});
    EXPECT_EQ(again.status, 0) << again.err;
    EXPECT_FALSE(std::filesystem::exists(folder / "complete/sub-sim_task-blocks_desc-ICA_dimension.tsv"));
}

TEST_F(OutputFolderOfARun, WithForeignFilesIsRefusedDespiteForce) {
    for (const std::string name : {"plugin/mycode.c", "sub-other_desc-brain_mask.nii.gz",
                                   "sub-sim_task-blocks_desc-ICA_labels.tsv", "truth.json"}) {
        writeFile(folder / ("out/" + name), "work");
        const CommandResult result = run("out", {"--force"});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("holds " + name + ", which does not belong to a result"));
        EXPECT_EQ(textOf(folder / ("out/" + name)), "work");
        std::filesystem::remove(folder / ("out/" + name));
    }
}

TEST_F(OutputFolderOfARun, IsNotReplacedByAnotherKindOfResult) {
    const std::string before = textOf(folder / "out/log.txt");
    const CommandResult sample = simulate((folder / "out").string(), {"--force"});
    EXPECT_EQ(sample.status, 1);
    EXPECT_THAT(sample.err, HasSubstr("out holds a result of znica run; --force replaces only simulated samples.\n"));
    EXPECT_EQ(textOf(folder / "out/log.txt"), before);
}

TEST_F(OutputFolderOfARun, DoesNotTakeThePlaceOfASample) {
    ASSERT_EQ(simulate((folder / "other").string()).status, 0);
    const CommandResult result = run("other", {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("other holds a simulated sample; --force replaces only results of znica run.\n"));
    EXPECT_TRUE(std::filesystem::exists(folder / "other/truth.json"));
}

TEST_F(OutputFolderOfARun, OfAnotherProgramIsRefusedDespiteForce) {
    writeFile(folder / "out/dataset_description.json", R"({"GeneratedBy": [{"Name": "another"}]})");
    const CommandResult result = run("out", {"--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("has no dataset_description.json that names znica"));
}

TEST_F(OutputFolderOfARun, ThatContainsAnInputIsNotReplaced) {
    const std::string mask = (folder / "out/sub-sim_task-blocks_desc-brain_mask.nii.gz").string();
    const std::string before = textOf(mask);
    std::filesystem::create_symlink(mask, folder / "link.nii.gz");
    for (const std::string& given : {mask, (folder / "link.nii.gz").string()}) {
        const CommandResult result = run("out", {"--mask", given, "--force"});
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, HasSubstr(given + " lies in " + (folder / "out").string() + ", which --force would"));
    }
    const CommandResult image = run("s", {"--force"});
    EXPECT_EQ(image.status, 3);
    EXPECT_THAT(image.err, HasSubstr("_bold.nii.gz lies in "));
    EXPECT_EQ(textOf(mask), before);
}

TEST_F(OutputFolderOfARun, OnAFullDiskLeavesNothing) {
    const CommandResult result = run("full", {}, {{}, {}, "ulimit -f 20;"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::StartsWith("znica: " + (folder / "full").string() + "/sub-sim"));
    EXPECT_THAT(result.err, HasSubstr("cannot be written; check the permissions and the free disk space"));
    EXPECT_THAT(namesIn(folder.path()), ElementsAre("out", "s"));
}

TEST_F(OutputFolderOfARun, OnAReadOnlyDiskIsRefused) { // where not even root may write
    const CommandResult result = run("/proc/nowhere/out", {});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::StartsWith("znica: /proc/nowhere cannot be created: "));
}

} // namespace
} // namespace zn::test
