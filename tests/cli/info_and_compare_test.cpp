// What the plug-in says about itself, and how similar two results are.
#include "cli/command.h"
#include "files.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

TEST(Info, IsPlainText) {
    const CommandResult result = znica({"info"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("name: Independent Component Analysis (ICA)\nversion: 2.0\n"
                                       "author: The ICA plug-in developers, the ICA plug-in project\n"));
    EXPECT_THAT(result.out, HasSubstr("(Hyv\xC3\xA4rinen A., Fast and robust"));
    EXPECT_THAT(result.out, Not(HasSubstr("<")));
}

TEST(Info, ListsTheHostFunctionsThatAnAnalysisUses) {
    const CommandResult result = znica({"info"});
    EXPECT_THAT(result.out, HasSubstr(" 0 do not exist\n"));
    EXPECT_THAT(result.out, HasSubstr("\n  znLogText\n"));
    EXPECT_THAT(result.out, HasSubstr("\n  zn_intel_matrix_matrix_mult_d\n"));
    EXPECT_LT(result.out.find("\n  znLogText\n"), result.out.find("\nnot available ("));
    EXPECT_GT(result.out.find("\n  znPlotBars\n"), result.out.find("\nnot available ("));
}

TEST(Info, AFileThatIsNotAPluginIsRefused) {
    EXPECT_EQ(znica({"info", "--plugin", HOST_MODULE_FILE}).status, 3);
}

class Compare : public testing::Test {
protected:
    static void SetUpTestSuite() {
        folder = new TemporaryFolder;
        ASSERT_EQ(znica({"simulate", "--size", "tiny", "--sources", "4", "--out", (*folder / "s").string()}).status, 0);
        run("a", "5", "1");
        run("b", "5", "2");
        run("few", "3", "3");
    }
    static void TearDownTestSuite() { delete folder; }

    static void run(const std::string& name, const std::string& components, const std::string& seed) {
        const std::string stem = (*folder / "s/sub-sim_task-blocks_").string();
        const CommandResult result =
            znica({"run", stem + "bold.nii.gz", "--mask", stem + "desc-brain_mask.nii.gz", "--components", components,
                   "--seed", seed, "--no-clustering", "--out", path(name)});
        ASSERT_EQ(result.status, 0) << result.err;
    }
    static std::string path(const std::string& name) { return (*folder / name).string(); }

    static TemporaryFolder* folder;
};

TEST_F(Compare, AResultComparedWithItselfGivesOnes) {
    const CommandResult result = znica({"compare", path("a"), path("a")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "a\tb\tr\nICA_00\tICA_00\t1.0000\nICA_01\tICA_01\t1.0000\nICA_02\tICA_02\t1.0000\n"
                          "ICA_03\tICA_03\t1.0000\nICA_04\tICA_04\t1.0000\n"
                          "median |r| 1.0000; 5 of 5 pairs above 0.8\n");
}

TEST_F(Compare, AnotherSeedFindsTheSameComponentsAndTheTableIsWritten) {
    const CommandResult result = znica({"compare", path("a"), path("b"), "--out", path("table.tsv")});
    const std::string written = textOf(*folder / "table.tsv");
    EXPECT_THAT(result.out, StartsWith(written));
    EXPECT_THAT(result.out.substr(written.size()),
                MatchesRegex("median \\|r\\| [01]\\.[0-9]{4}; [45] of 5 pairs above 0.8\n"));
    const auto table = tableIn(*folder / "table.tsv");
    ASSERT_EQ(table.size(), 6U);
    for (std::size_t row = 1; row <= 4; ++row) EXPECT_GT(std::fabs(std::stod(table[row][2])), 0.95) << row;

    const CommandResult again = znica({"compare", path("a"), path("b"), "--out", path("table.tsv")});
    EXPECT_EQ(again.status, 1);
    EXPECT_THAT(again.err, HasSubstr("table.tsv exists"));
    EXPECT_EQ(znica({"compare", path("a"), path("b"), "--out", path("table.tsv"), "--force"}).status, 0);
}

TEST_F(Compare, AFileOfAComparedResultIsNeverReplaced) {
    const std::string before = textOf(*folder / "b/log.txt");
    const CommandResult result = znica({"compare", path("a"), path("b"), "--out", path("b/log.txt"), "--force"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("b/log.txt belongs to a result that is compared"));
    EXPECT_EQ(textOf(*folder / "b/log.txt"), before);
}

TEST_F(Compare, AnOutputThatCannotBeAFileIsSaidToBeOne) {
    const CommandResult missing = znica({"compare", path("a"), path("b"), "--out", path("none/table.tsv")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "znica: " + path("none/table.tsv") + " cannot be written: the folder " + path("none") +
                               " does not exist.\n");
    const CommandResult taken = znica({"compare", path("a"), path("b"), "--out", path("s"), "--force"});
    EXPECT_EQ(taken.status, 1);
    EXPECT_EQ(taken.err, "znica: " + path("s") + " is a folder; name a file for the table.\n");
}

TEST_F(Compare, AResultThatDoesNotExistIsNamed) {
    const CommandResult missing = znica({"compare", path("a"), path("nodir")});
    EXPECT_EQ(missing.status, 3);
    EXPECT_EQ(missing.err, "znica: " + path("nodir") + " does not exist.\n");
    EXPECT_EQ(znica({"report", path("nodir")}).err, missing.err);
}

TEST_F(Compare, ComponentsWithoutAPartnerAreListed) {
    for (const auto& [a, b, line] : {std::tuple("a", "few", "\tn/a\tn/a\n"), {"few", "a", "\nn/a\tICA_0"}}) {
        const CommandResult result = znica({"compare", path(a), path(b)});
        EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 7);
        EXPECT_THAT(result.out, HasSubstr(line));
        EXPECT_THAT(result.out, EndsWith(" of 3 pairs above 0.8; 2 components without a partner\n"));
    }
}

TEST_F(Compare, ATableThatCannotBeWrittenIsNotPrinted) {
    const CommandResult result = znica({"compare", path("a"), path("b"), "--out", path("nowhere/table.tsv")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("nowhere/table.tsv cannot be written"));
}

TEST_F(Compare, OutputThatDoesNotReachItsFileIsAFailure) {
    for (const std::vector<std::string>& command : {std::vector<std::string>{"compare", path("a"), path("b")},
                                                    {"score", path("a"), "--truth", path("s")},
                                                    {"info"}}) {
        const CommandResult result = znica(command, {{}, {}, "exec > /dev/full;"});
        EXPECT_EQ(result.status, 1) << command.front();
        EXPECT_THAT(result.err, HasSubstr("standard output cannot be written")) << command.front();
    }
}

TEST_F(Compare, AReaderThatHasExitedIsNotAFailure) {
    const CommandResult result = znica({"compare", path("a"), path("b")}, {{}, {}, kToNobody});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(Compare, AFolderWithoutMapsIsRefused) {
    const CommandResult result = znica({"compare", path("a"), path("s")});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("has no file that ends in _desc-ICA_components.nii.gz"));
}

TemporaryFolder* Compare::folder = nullptr;

} // namespace
} // namespace zn::test
