// `znica bids ... group --ica` on a small simulated dataset.
#include "cli/command.h"
#include "files.h"

#include <filesystem>
#include <map>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::HasSubstr;
using testing::IsSupersetOf;

class GroupOfStudy : public testing::Test {
protected:
    static void SetUpTestSuite() {
        shared = std::make_unique<TemporaryFolder>();
        const auto made = znica(
            {"simulate", "--subjects", "3", "--size", "tiny", "--sources", "4", "--out", (*shared / "data").string()});
        ASSERT_EQ(made.status, 0) << made.err;
    }
    static void TearDownTestSuite() { shared.reset(); }

    CommandResult together(std::vector<std::string> options) const {
        options.insert(options.begin(), {"bids", *shared / "data", folder / "out", "group"});
        return znica(options, {folder.path(), {}, {}});
    }
    static std::string image(const std::string& subject) {
        return *shared / "data" / subject / "func" / (subject + "_task-rest_bold.nii.gz");
    }

    static std::unique_ptr<TemporaryFolder> shared;
    TemporaryFolder folder;
};

std::unique_ptr<TemporaryFolder> GroupOfStudy::shared;

TEST_F(GroupOfStudy, PutsWhatIsAboutARunBesideItsOtherResults) {
    const auto result = together({"--ica", "4", "--repeats", "2", "--quiet"});
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(namesIn(folder / "out/sub-02/func"),
                IsSupersetOf({"sub-02_task-rest_desc-dualreg_timeseries.tsv",
                              "sub-02_task-rest_desc-dualreg_stat-effect_statmap.nii.gz",
                              "sub-02_task-rest_desc-dualreg_stat-z_statmap.nii.gz"}));
    EXPECT_FALSE(fs::exists(folder / "out/group/dualreg"));
    EXPECT_THAT(textOf(folder / "out/.bidsignore"), HasSubstr("group/\n"));

    const auto same = znica({"group", "all", folder / "alone", image("sub-01"), image("sub-02"), image("sub-03"),
                             "--components", "4", "--repeats", "2", "--quiet"});
    ASSERT_EQ(same.status, 0) << same.err;
    for (const char* file : {"desc-groupICA_components.nii.gz", "desc-groupICA_amplitudes.tsv"}) {
        EXPECT_EQ(textOf(folder / "out/group" / file), textOf(folder / "alone" / file)) << file;
    }
}

TEST_F(GroupOfStudy, ItsStepsCanBeDoneOneByOne) {
    const auto list = together({"--ica", "4", "--list"});
    ASSERT_EQ(list.status, 0) << list.err;
    EXPECT_FALSE(fs::exists(folder / "out"));
    EXPECT_THAT(list.out, HasSubstr("name\trepetition_time\tvolumes\tmask\timage\tresults\tproblem\n"
                                    "sub-01_task-rest\t2\t80\tn/a\t"));
    writeFile(folder / "runs.tsv", list.out);
    const std::string study = folder / "out/group";
    for (const std::vector<std::string>& step : {std::vector<std::string>{"plan", study, "--runs", "runs.tsv"},
                                                 {"reduce", study},
                                                 {"merge", study},
                                                 {"ica", study, "--components", "4", "--repeats", "2"},
                                                 {"back", study, "--only", "sub-03_task-rest"}}) {
        std::vector<std::string> arguments = step;
        arguments.insert(arguments.begin(), "group");
        const auto done = znica(arguments, {folder.path(), {}, {}});
        ASSERT_EQ(done.status, 0) << step[0] << ": " << done.err;
    }
    EXPECT_TRUE(fs::exists(folder / "out/sub-03/func/sub-03_task-rest_desc-dualreg_timeseries.tsv"));
    const auto all = together({"--ica", "4", "--repeats", "2"});
    EXPECT_EQ(all.status, 0) << all.err;
    EXPECT_THAT(all.out, HasSubstr("The group components are estimated already.\n"));
}

TEST_F(GroupOfStudy, TakesTheOptionsOfThePreparation) {
    ASSERT_EQ(together({"--ica", "2", "--repeats", "1", "--high-pass", "100", "--scale", "sd", "--smooth", "6"}).status,
              0);
    const json study = json::parse(textOf(folder / "out/group/study.json"));
    EXPECT_EQ(study["Preparation"], (json{{"SmoothingFWHM", 6.0}, {"HighPassCutOff", 100.0}, {"Scaling", "sd"}}));
}

TEST_F(GroupOfStudy, NamesItsOwnOptionWhereThereAreTooManyComponents) {
    const auto result = together({"--ica", "1000", "--quiet"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("request fewer with --ica, or list more runs."));
    EXPECT_FALSE(fs::exists(folder / "out/group/reduction"));
}

TEST_F(GroupOfStudy, NeedsTwoRunsAmongTheChosen) {
    const auto result = together({"--ica", "4", "--participant-label", "01"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, HasSubstr("a group analysis needs at least two runs"));
}

TEST_F(GroupOfStudy, RefusesOptionsWithoutMeaning) {
    const std::map<std::vector<std::string>, std::string> wrong = {
        {{"--ica", "4", "--components", "5"}, "--components: is --ica for a group analysis"},
        {{"--ica", "4", "--design", "auto"}, "--design: has no meaning for a group analysis"},
        {{"--ica", "4", "--mem", "1000"}, "--mem: has no meaning for a group analysis"},
        {{"--ica", "4", "--smooth", "auto"}, "--smooth: needs a width in mm"},
        {{"--ica", "4", "--mask", "none"}, "--mask: needs a file or auto"},
        {{"--ica", "4", "--dummy-scans", "confounds"}, "--dummy-scans: needs a number"},
        {{"--ica", "1"}, "--ica: needs a number from 2 to 1000, or auto; got 1"}};
    for (const auto& [options, why] : wrong) {
        const auto result = together(options);
        EXPECT_EQ(result.status, 2) << why;
        EXPECT_THAT(result.err, HasSubstr(why));
    }
    const auto level = znica({"bids", *shared / "data", folder / "out", "participant", "--ica", "4"});
    EXPECT_EQ(level.status, 2);
    EXPECT_THAT(level.err, HasSubstr("--ica: belongs to the level group"));
}

} // namespace
} // namespace zn::test
