// The symmetric approach: options, record, log, and what happens when it does not converge.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

class Approach : public testing::Test {
protected:
    CommandResult run(const std::string& out, std::vector<std::string> options) {
        const std::string stem = (folder / "s/sub-sim_task-blocks_").string();
        options.insert(options.begin(),
                       {"run", stem + "bold.nii.gz", "--mask", stem + "desc-brain_mask.nii.gz", "--components", "5",
                        "--no-clustering", "--no-report", "--seed", "7", "--out", (folder / out).string()});
        return znica(options);
    }
    std::string text(const std::string& out, const std::string& ending) {
        return textOf(folder / (out + "/sub-sim_task-blocks_desc-ICA_" + ending));
    }
    void makeSample() {
        ASSERT_EQ(znica({"simulate", "--size", "tiny", "--sources", "4", "--out", (folder / "s").string()}).status, 0);
    }

    TemporaryFolder folder;
};

TEST_F(Approach, SymmetricIsRecordedWithItsStarts) {
    makeSample();
    const CommandResult result = run("r", {"--approach", "symmetric", "--starts", "4"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("start 4 of 4\nall voxels\nfingerprint\n"));
    const json facts = json::parse(text("r", "decomposition.json"));
    EXPECT_EQ(facts["Settings"]["Approach"], "symmetric");
    EXPECT_EQ(facts["Settings"]["Starts"], 4);
    const json estimate = facts["SymmetricEstimate"];
    ASSERT_EQ(estimate["Starts"].size(), 4U);
    EXPECT_EQ(estimate["Starts"][estimate["ChosenStart"].get<std::size_t>() - 1]["Agreement"].get<float>(), 1.0f);
    EXPECT_GT(estimate["Iterations"], 0);
    EXPECT_GT(estimate["Negentropy"], 0.0);
    EXPECT_EQ(facts["Components"].size(), 5U);
    EXPECT_EQ(facts["Components"][0].count("Iterations"), 0U) << "all components share the iterations";
    const std::string log = textOf(folder / "r/log.txt");
    EXPECT_THAT(log, HasSubstr("\nznica: Running FastICA computation (symmetric approach, 4 starts)\n"));
    EXPECT_THAT(log, HasSubstr("5 of 5 components converged\n"));
    EXPECT_THAT(log, Not(HasSubstr("deflation")));
}

TEST_F(Approach, SymmetricIsTheDefault) {
    makeSample();
    ASSERT_EQ(run("default", {}).status, 0);
    ASSERT_EQ(run("named", {"--approach", "symmetric"}).status, 0);
    EXPECT_EQ(text("default", "mixing.tsv"), text("named", "mixing.tsv"));
}

// In one word what the desktop computes.
TEST_F(Approach, AsIsIsDeflationWithoutPreparation) {
    makeSample();
    ASSERT_EQ(run("as is", {"--as-is"}).status, 0);
    ASSERT_EQ(run("named", {"--approach", "deflation", "--smooth", "0"}).status, 0);
    EXPECT_EQ(text("as is", "mixing.tsv"), text("named", "mixing.tsv"));
    const json facts = json::parse(text("as is", "decomposition.json"));
    EXPECT_EQ(facts["Settings"]["Approach"], "deflation");
    EXPECT_TRUE(facts["Settings"]["Starts"].is_null());
    EXPECT_EQ(facts.count("SymmetricEstimate"), 0U);
    EXPECT_EQ(facts["Preparation"]["SmoothingFWHM"], 0.0);
}

TEST_F(Approach, AsIsAdmitsNoOtherChoice) {
    for (const auto& [option, value] : {std::pair("--smooth", "6"), {"--scale", "sd"}, {"--approach", "symmetric"}}) {
        const CommandResult result = znica({"run", "bold.nii", "--out", "r", "--as-is", option, value});
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err, HasSubstr("give " + std::string(option) + " or --as-is, not both"));
    }
}

TEST_F(Approach, SymmetricGivesTheSameFilesWithAnyNumberOfThreads) {
    makeSample();
    for (const char* threads : {"1", "2", "3"}) {
        ASSERT_EQ(run(threads, {"--approach", "symmetric", "--threads", threads}).status, 0);
        for (const char* file : {"components.nii.gz", "mixing.tsv", "metrics.tsv"}) {
            EXPECT_EQ(text(threads, file), text("1", file)) << threads << ' ' << file;
        }
    }
}

TEST_F(Approach, SymmetricWithoutConvergenceCountsAsGivenUp) {
    makeSample();
    const CommandResult result = run("r", {"--approach", "symmetric", "--max-iterations", "1"});
    EXPECT_EQ(result.status, 4);
    EXPECT_THAT(result.err, HasSubstr("no component converged"));
    EXPECT_FALSE(std::filesystem::exists(folder / "r"));
}

TEST_F(Approach, StartsBelongToTheSymmetricOne) {
    const CommandResult result = znica({"run", "bold.nii", "--out", "r", "--approach", "deflation", "--starts", "2"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("--starts: needs --approach symmetric"));
    EXPECT_EQ(znica({"run", "bold.nii", "--out", "r", "--approach", "symmetric", "--starts", "0"}).status, 2);
    EXPECT_THAT(znica({"run", "bold.nii", "--out", "r", "--approach", "parallel"}).err,
                HasSubstr("needs deflation or symmetric; got parallel"));
}

TEST_F(Approach, OfAPlugInThatDoesNotAskIsRefused) {
    writeFile(folder / "sub-01_task-rest_bold.nii", plainSeries(24).bytes());
    writeFile(folder / "labels.nii", plainMask().bytes());
    const CommandResult result = znica({"run", (folder / "sub-01_task-rest_bold.nii").string(), "--out",
                                        (folder / "out").string(), "--plugin", FAKE_PLUGIN_FILE, "--components", "2",
                                        "--rois", (folder / "labels.nii").string(), "--approach", "symmetric"},
                                       {{}, {"ZN_FAKE_PLUGIN=small records"}, {}});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("does not let znica find the components; use --approach deflation."));
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

} // namespace
} // namespace zn::test
