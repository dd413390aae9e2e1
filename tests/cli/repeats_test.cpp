// Several runs with different seeds: the stability of the components of the first run.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

class Repeats : public testing::Test {
protected:
    CommandResult run(const std::string& out, std::vector<std::string> options) {
        const std::string stem = (folder / "s/sub-sim_task-blocks_").string();
        options.insert(options.begin(),
                       {"run", stem + "bold.nii.gz", "--mask", stem + "desc-brain_mask.nii.gz", "--components", "6",
                        "--no-clustering", "--seed", "7", "--out", (folder / out).string()});
        return znica(options);
    }
    json facts(const std::string& out) {
        return json::parse(textOf(folder / (out + "/sub-sim_task-blocks_desc-ICA_decomposition.json")));
    }
    void makeSample() {
        ASSERT_EQ(znica({"simulate", "--size", "tiny", "--sources", "4", "--out", (folder / "s").string()}).status, 0);
    }

    TemporaryFolder folder;
};

TEST_F(Repeats, TrueSourcesAreStable) {
    makeSample();
    const CommandResult result = run("r", {"--repeats", "5"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("6 of 6 components found; 5 of 5 runs found all\n"));

    const CommandResult score = znica({"score", (folder / "r").string(), "--truth", (folder / "s").string()});
    std::istringstream lines(score.out);
    std::string header;
    std::getline(lines, header);
    const auto table = tableIn(folder / "r/sub-sim_task-blocks_desc-ICA_metrics.tsv");
    ASSERT_EQ(table[0].size(), 25U);
    EXPECT_EQ(table[0][23], "stability_iq");
    for (int source = 0; source < 4; ++source) {
        std::string name, component, correlation;
        lines >> name >> component >> correlation;
        const auto& row = table[std::stoul(component.substr(4)) + 1];
        EXPECT_GT(std::stod(row[23]), 0.8) << name;
        EXPECT_EQ(row[24], "5") << name;
    }
}

TEST_F(Repeats, AreRecordedWithTheirSeedsAndDescribed) {
    makeSample();
    ASSERT_EQ(run("r", {"--repeats", "3"}).status, 0);
    const json repeats = facts("r")["Repeats"];
    EXPECT_EQ(repeats["Runs"], 3);
    EXPECT_EQ(repeats["Converged"], 3);
    EXPECT_THAT(repeats["Seeds"].get<std::vector<int>>(), ElementsAre(7, 8, 9));
    EXPECT_THAT(repeats["ComponentsFound"].get<std::vector<int>>(), ElementsAre(6, 6, 6));
    EXPECT_EQ(facts("r")["Components"][0].count("StabilityIndex"), 1U);
    EXPECT_THAT(textOf(folder / "r/sub-sim_task-blocks_desc-ICA_metrics.json"), HasSubstr("\"stability_runs\""));
    EXPECT_THAT(textOf(folder / "r/log.txt"), HasSubstr("\nznica: run 3 of 3, seed 9\n"));
    EXPECT_FALSE(std::filesystem::exists(folder / "r/plugin/again"));
}

TEST_F(Repeats, DoNotChangeTheFirstRun) {
    makeSample();
    ASSERT_EQ(run("alone", {}).status, 0);
    ASSERT_EQ(run("first", {"--repeats", "2"}).status, 0);
    for (const char* file : {"components.nii.gz", "mixing.tsv"}) {
        const std::string name = std::string("/sub-sim_task-blocks_desc-ICA_") + file;
        EXPECT_EQ(textOf(folder / ("alone" + name)), textOf(folder / ("first" + name)));
    }
    EXPECT_EQ(facts("alone").count("Repeats"), 0U);
}

} // namespace
} // namespace zn::test
