// The steps of a group analysis: what they write, what they repeat, and what they refuse.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <chrono>
#include <csignal>
#include <map>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using testing::Each;
using testing::HasSubstr;

// Noise of its own in every run.
NiftiBytes noise(unsigned seed, int volumes = 12) {
    NiftiBytes image = plainSeries(volumes);
    image.data.clear();
    std::uint32_t state = seed;
    for (int i = 0; i < 6 * 5 * 4 * volumes; ++i) {
        state = state * 1664525U + 1013904223U;
        image.append(static_cast<std::int16_t>(500 + (state >> 24)));
    }
    return image;
}

class Group : public testing::Test {
protected:
    CommandResult group(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "group");
        return znica(arguments, {folder.path(), {}, {}});
    }
    void write(const std::string& name, const NiftiBytes& image) { writeFile(folder / name, image.bytes()); }
    // Three small runs and a mask of all voxels.
    void makeRuns() {
        for (unsigned i = 1; i <= 3; ++i) write("sub-0" + std::to_string(i) + "_bold.nii", noise(i));
        write("mask.nii", plainMask());
    }
    CommandResult plan(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"plan", "study", "--mask", "mask.nii"});
        return group(arguments);
    }
    void expectRefused(const CommandResult& result, const std::string& why) {
        EXPECT_EQ(result.status, 3);
        EXPECT_THAT(result.err, HasSubstr(why));
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }

    TemporaryFolder folder;
};

TEST_F(Group, NeedsAtLeastTwoRuns) {
    makeRuns();
    expectRefused(plan({"sub-01_bold.nii"}), "a group analysis needs at least two runs");
    EXPECT_FALSE(fs::exists(folder / "study"));
}

TEST_F(Group, RefusesTwoRunsOfOneName) {
    makeRuns();
    fs::create_directory(folder / "other");
    fs::copy(folder / "sub-02_bold.nii", folder / "other/sub-01_bold.nii");
    expectRefused(plan({"sub-01_bold.nii", "other/sub-01_bold.nii"}), "two runs are named sub-01");
}

TEST_F(Group, NamesTheRunsOnAnotherGrid) {
    makeRuns();
    NiftiBytes moved = noise(4);
    moved.sform[0][3] = -12;
    write("sub-04_bold.nii", moved);
    expectRefused(plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-04_bold.nii"}),
                  "most have 6x5x4 voxels with the first voxel at (-9, -7.5, -6) mm, but sub-04 has 6x5x4 voxels with "
                  "the first voxel at (-12, -7.5, -6) mm");
}

TEST_F(Group, NamesTheRunsWithAnotherRepetitionTime) {
    makeRuns();
    NiftiBytes slow = noise(4);
    slow.pixdim[4] = 3;
    write("sub-04_bold.nii", slow);
    expectRefused(plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-04_bold.nii"}),
                  "most have a repetition time of 2 s, but sub-04 has a repetition time of 3 s");
}

TEST_F(Group, DoesNotCallOneOfTwoRunsMost) {
    makeRuns();
    NiftiBytes slow = noise(4);
    slow.pixdim[4] = 3;
    write("sub-04_bold.nii", slow);
    expectRefused(plan({"sub-01_bold.nii", "sub-04_bold.nii"}),
                  "the runs differ: sub-01 has a repetition time of 2 s, but sub-04 has a repetition time of 3 s; ");
}

TEST_F(Group, NamesTheRunsInAnotherSpace) {
    makeRuns();
    for (const char* name : {"sub-01_space-MNI_bold.nii", "sub-02_space-MNI_bold.nii", "sub-03_space-T1w_bold.nii"}) {
        write(name, noise(static_cast<unsigned>(name[5])));
    }
    expectRefused(plan({"sub-01_space-MNI_bold.nii", "sub-02_space-MNI_bold.nii", "sub-03_space-T1w_bold.nii"}),
                  "most have space-MNI, but sub-03_space-T1w has space-T1w");
}

TEST_F(Group, RefusesARunThatIsListedTwice) {
    makeRuns();
    fs::copy(folder / "sub-01_bold.nii", folder / "sub-09_bold.nii");
    expectRefused(plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-09_bold.nii"}),
                  "sub-01 and sub-09 hold the same data");
}

TEST_F(Group, RefusesAConstantRun) {
    makeRuns();
    NiftiBytes constant = plainSeries();
    constant.data.assign(constant.data.size(), '\1');
    write("sub-04_bold.nii", constant);
    expectRefused(plan({"sub-01_bold.nii", "sub-04_bold.nii"}), "sub-04_bold.nii has no voxel that can be analysed");
}

TEST_F(Group, RefusesASingleVolume) {
    makeRuns();
    write("sub-04_bold.nii", noise(4, 1));
    expectRefused(plan({"sub-01_bold.nii", "sub-04_bold.nii"}), "sub-04_bold.nii has 1 volume, too few");
}

TEST_F(Group, NamesAllRunsThatCannotBeUsed) {
    makeRuns();
    write("sub-04_bold.nii", noise(4, 1));
    writeFile(folder / "sub-05_bold.nii", "nothing of the kind");
    const CommandResult result =
        plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-04_bold.nii", "sub-05_bold.nii", "sub-06_bold.nii"});
    expectRefused(result, "3 runs cannot take part: sub-04_bold.nii has 1 volume, too few");
    for (const char* other : {"sub-05_bold.nii", "sub-06_bold.nii"}) EXPECT_THAT(result.err, HasSubstr(other));

    NiftiBytes constant = plainSeries();
    constant.data.assign(constant.data.size(), '\1');
    for (const char* name : {"sub-04_bold.nii", "sub-05_bold.nii"}) write(name, constant);
    expectRefused(plan({"sub-01_bold.nii", "sub-04_bold.nii", "sub-05_bold.nii"}),
                  "2 runs cannot take part: sub-04_bold.nii has no voxel that can be analysed");
}

TEST_F(Group, NamesTheRunsThatShareTooFewVoxels) {
    makeRuns();
    NiftiBytes half = plainMask();
    half.data.replace(0, 60, std::string(60, '\0'));
    write("half.nii", half);
    writeFile(folder / "runs.tsv", "image\tmask\nsub-01_bold.nii\tmask.nii\nsub-02_bold.nii\tmask.nii\n"
                                   "sub-03_bold.nii\thalf.nii\n");
    expectRefused(group({"plan", "study", "--runs", "runs.tsv"}),
                  "the runs have only 60 voxels in common, less than 60 % of the median mask of 120: sub-03 lacks 60 "
                  "voxels that most have");
}

TEST_F(Group, RefusesRunsWithoutACommonVoxel) {
    makeRuns();
    for (const int half : {0, 1}) {
        NiftiBytes mask = plainMask();
        mask.data.replace(static_cast<std::size_t>(half) * 60, 60, std::string(60, '\0'));
        write("half" + std::to_string(half) + ".nii", mask);
    }
    writeFile(folder / "runs.tsv", "image\tmask\nsub-01_bold.nii\thalf0.nii\nsub-02_bold.nii\thalf1.nii\n");
    expectRefused(group({"plan", "study", "--runs", "runs.tsv"}), "the runs have only 0 voxels in common");
    EXPECT_FALSE(fs::exists(folder / "study"));
}

TEST_F(Group, NeedsAColumnOfImages) {
    writeFile(folder / "runs.tsv", "file\tmask\na\tb\n");
    expectRefused(group({"plan", "study", "--runs", "runs.tsv"}), "runs.tsv has no column named image");
}

TEST_F(Group, EveryStepNeedsTheOneBefore) {
    makeRuns();
    expectRefused(group({"reduce", "study"}), "study holds no planned study (study.json)");
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    expectRefused(group({"merge", "study"}), "no batch has been reduced yet");
    expectRefused(group({"ica", "study"}), "study holds no merged rows yet");
    expectRefused(group({"back", "study"}), "study holds no group components yet");
    expectRefused(group({"report", "study"}), "study holds no group components yet");
}

TEST_F(Group, NamesTheBatchThatIsMissing) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-03_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study", "--batch", "1/3"}).status, 0);
    ASSERT_EQ(group({"reduce", "study", "--batch", "3/3"}).status, 0);
    expectRefused(group({"merge", "study"}), "batch-2of3 is missing");
    expectRefused(group({"reduce", "study", "--batch", "2/4"}), "more batches than the 3 runs");
}

TEST_F(Group, ARunThatIsAddedMakesEarlierBatchesForeign) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii", "sub-03_bold.nii"}).status, 0);
    expectRefused(group({"merge", "study"}), "batch-1of1 was reduced for another plan of this study");
}

TEST_F(Group, RefusesAFolderThatHoldsSomethingElse) {
    makeRuns();
    fs::create_directory(folder / "full");
    writeFile(folder / "full/notes.txt", "not ours");
    const CommandResult result = group({"plan", "full", "sub-01_bold.nii", "sub-02_bold.nii"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "znica: full is not empty and holds no study of a group, but notes.txt; name another folder.\n");
    EXPECT_THAT(namesIn(folder / "full"), testing::ElementsAre("notes.txt"));
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    writeFile(folder / "study/notes.txt", "beside a study");
    EXPECT_EQ(plan({"sub-01_bold.nii", "sub-03_bold.nii"}).status, 0);
    EXPECT_TRUE(fs::exists(folder / "study/notes.txt"));
}

TEST_F(Group, MergingRemovesTheBatchesOfAnotherPlan) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    for (const char* batch : {"1/2", "2/2"}) ASSERT_EQ(group({"reduce", "study", "--batch", batch}).status, 0);
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-03_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    ASSERT_EQ(group({"merge", "study"}).status, 0);
    EXPECT_THAT(namesIn(folder / "study/reduction"),
                testing::UnorderedElementsAre("batch-1of1.json", "batch-1of1.rows", "group.json", "group.rows"));
}

TEST_F(Group, ABatchOfAnotherStudyIsForeign) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    ASSERT_EQ(group({"plan", "other", "--mask", "mask.nii", "sub-01_bold.nii", "sub-03_bold.nii"}).status, 0);
    fs::copy(folder / "study/reduction", folder / "other/reduction");
    expectRefused(group({"merge", "other"}), "batch-1of1 was reduced for another plan of this study");
}

TEST_F(Group, NoticesADamagedPlan) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    writeFile(folder / "study/study.json", textOf(folder / "study/study.json").substr(0, 300));
    expectRefused(group({"reduce", "study"}), "study/study.json is damaged; plan the study again");
}

TEST_F(Group, NoticesADamagedReduction) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    std::string rows = textOf(folder / "study/reduction/batch-1of1.rows");
    rows[7] = static_cast<char>(rows[7] ^ 1);
    writeFile(folder / "study/reduction/batch-1of1.rows", rows);
    expectRefused(group({"merge", "study"}), "batch-1of1.rows does not match its record");
    fs::resize_file(folder / "study/reduction/batch-1of1.rows", 100);
    expectRefused(group({"merge", "study"}), "batch-1of1.rows does not match its record");
}

TEST_F(Group, NoticesAnImageThatChangedAfterThePlan) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    write("sub-02_bold.nii", noise(77));
    expectRefused(group({"reduce", "study"}), "sub-02_bold.nii has changed since the study was planned");
    EXPECT_FALSE(fs::exists(folder / "study/reduction")); // nothing half-written
}

TEST_F(Group, AFullDiskLeavesNothingOfTheStep) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    const CommandResult result = znica({"group", "reduce", "study"}, {folder.path(), {}, "ulimit -f 4;"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("/study/reduction/batch-1of1.rows cannot be written"));
    EXPECT_FALSE(fs::exists(folder / "study/reduction"));
    EXPECT_EQ(group({"reduce", "study"}).status, 0);
}

TEST_F(Group, RefusesMoreComponentsThanRows) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    ASSERT_EQ(group({"merge", "study"}).status, 0);
    expectRefused(group({"ica", "study", "--components", "24"}), "24 components are more than the");
}

TEST_F(Group, RefusesMoreComponentsThanRowsBeforeItReducesTheRuns) {
    makeRuns();
    expectRefused(
        group({"all", "study", "--mask", "mask.nii", "sub-01_bold.nii", "sub-02_bold.nii", "--components", "1000"}),
        "1000 components are more than the 23 rows to which the group is reduced; request fewer with "
        "--components, or list more runs.");
    EXPECT_FALSE(fs::exists(folder / "study/reduction"));
}

TEST_F(Group, RefusesMoreComponentsThanARunHasVolumes) {
    makeRuns();
    ASSERT_EQ(plan({"sub-01_bold.nii", "sub-02_bold.nii", "--high-pass", "0"}).status, 0);
    ASSERT_EQ(group({"reduce", "study"}).status, 0);
    ASSERT_EQ(group({"merge", "study"}).status, 0);
    EXPECT_LE(group({"ica", "study", "--components", "15", "--repeats", "1"}).status, 4);
    expectRefused(group({"back", "study"}), "sub-01 cannot be regressed on");
    EXPECT_FALSE(fs::exists(folder / "study/dualreg"));
}

TEST_F(Group, OptionsBelongToTheirSteps) {
    const std::map<std::vector<std::string>, std::string> wrong = {
        {{"merge", "study", "--batch", "1/2"}, "--batch: belongs to the step reduce, not to merge"},
        {{"all", "study", "a.nii", "b.nii", "--only", "a"}, "--only: belongs to the step back, not to all"},
        {{"back", "study", "a.nii"}, "IMAGE: images are listed with the steps plan and all"},
        {{"reduce", "study", "--batch", "3/2"}, "--batch: needs I/N"},
        {{"plan", "study"}, "list the runs either as images or in a table with --runs"},
        {{"plan", "study", "a.nii", "--smooth", "auto"}, "--smooth: needs a width in mm"}};
    for (const auto& [arguments, why] : wrong) {
        const CommandResult result = group(arguments);
        EXPECT_EQ(result.status, 2) << why;
        EXPECT_THAT(result.err, HasSubstr(why));
    }
}

TEST_F(Group, RefusesAFileInPlaceOfTheFolder) {
    makeRuns();
    writeFile(folder / "study", "");
    const CommandResult result = plan({"sub-01_bold.nii", "sub-02_bold.nii"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "znica: study is not a folder; name the folder of the study before the images.\n");
}

// Whole analyses of simulated subjects.
class GroupAnalysis : public Group {
protected:
    void SetUp() override {
        ASSERT_EQ(znica({"simulate", "--subjects", "4", "--size", "tiny", "--sources", "4", "--out",
                         (folder / "sample").string()})
                      .status,
                  0);
        for (const char* name : {"sub-01", "sub-02", "sub-03", "sub-04"}) {
            images.push_back("sample/" + std::string(name) + "/func/" + name + "_task-rest_bold.nii.gz");
        }
    }
    std::vector<std::string> with(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), images.begin(), images.end());
        return arguments;
    }
    std::vector<std::string> all(const std::string& study) {
        return with({"all", study, "--components", "4", "--repeats", "2"});
    }
    // What was found, without records of times and memory.
    std::map<std::string, std::string> resultsIn(const std::string& study) {
        std::map<std::string, std::string> results;
        for (const char* part : {"", "dualreg"}) {
            for (const std::string& name : namesIn(folder / study / part)) {
                const bool wanted = name.ends_with(".nii.gz") || name.ends_with(".tsv");
                if (wanted) results[name] = textOf(folder / study / part / name);
            }
        }
        return results;
    }

    std::vector<std::string> images;
};

TEST_F(GroupAnalysis, TheSameStudyTwiceGivesTheSameBytes) {
    ASSERT_EQ(group(all("a")).status, 0);
    ASSERT_EQ(group(all("b")).status, 0);
    EXPECT_EQ(resultsIn("a").size(), 6U + 4U * 4U);
    EXPECT_EQ(resultsIn("a"), resultsIn("b"));
}

TEST_F(GroupAnalysis, WhatIsUpToDateIsNotRepeated) {
    ASSERT_EQ(group(all("study")).status, 0);
    const auto time = fs::last_write_time(folder / "study/desc-groupICA_components.nii.gz");
    const auto record = nlohmann::json::parse(textOf(folder / "study/desc-groupICA_decomposition.json"));
    EXPECT_FALSE(record.contains("PlugIn")); // none was named
    const CommandResult again = group(all("study"));
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.out, "The study is planned already.\nbatch-1of1 is reduced already.\nThe batches are merged "
                         "already.\nThe group components are estimated already.\nThe tables are written already.\n" +
                             (REPORT_IS_BUILT != 0 ? "page: study/desc-groupICA_report.html\n" : std::string()));
    EXPECT_EQ(fs::last_write_time(folder / "study/desc-groupICA_components.nii.gz"), time);
}

TEST_F(GroupAnalysis, ContinuesAPlannedStudyWithoutImages) {
    expectRefused(group({"all", "study"}),
                  "study holds no planned study (study.json); plan one with znica group plan.");
    ASSERT_EQ(group(with({"plan", "study"})).status, 0);
    const CommandResult refused = group({"all", "study", "--smooth", "6"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("--smooth: belongs to a new plan; list its images"));
    ASSERT_EQ(group({"all", "study", "--components", "4", "--repeats", "2"}).status, 0);
    EXPECT_TRUE(fs::exists(folder / "study/desc-groupICA_amplitudes.tsv"));
}

TEST_F(GroupAnalysis, AnotherPlanLeavesNothingOfTheEarlierOne) {
    ASSERT_EQ(group(all("study")).status, 0);
    writeFile(folder / "study/dualreg/notes.txt", "not ours");
    images.resize(2);
    const CommandResult planned = group(with({"plan", "study"}));
    EXPECT_EQ(planned.status, 0);
    EXPECT_EQ(planned.err,
              "znica: study was planned with other runs or options; what was computed for them is removed.\n");
    EXPECT_THAT(namesIn(folder / "study"),
                testing::UnorderedElementsAre("study.json", "desc-brain_mask.nii.gz", "desc-mean_bold.nii.gz",
                                              "reduction", "dualreg"));
    EXPECT_THAT(namesIn(folder / "study/dualreg"), testing::ElementsAre("notes.txt"));
    ASSERT_EQ(group(all("study")).status, 0);
    EXPECT_THAT(namesIn(folder / "study/dualreg"), testing::SizeIs(1 + 2 * 6));
    EXPECT_EQ(group(with({"plan", "study"})).err, ""); // the same plan
}

TEST_F(GroupAnalysis, OtherComponentsLeaveNothingOfTheEarlierOnes) {
    ASSERT_EQ(group(all("study")).status, 0);
    ASSERT_EQ(group({"ica", "study", "--components", "3", "--repeats", "2"}).status, 0);
    for (const std::string& name : namesIn(folder / "study")) {
        EXPECT_THAT(name, testing::Not(testing::ContainsRegex("amplitudes|netmats|report"))) << name;
    }
    EXPECT_TRUE(namesIn(folder / "study/dualreg").empty());
    ASSERT_EQ(group({"back", "study"}).status, 0);
    ASSERT_EQ(group({"ica", "study", "--components", "3", "--repeats", "2", "--force"}).status, 0); // the same maps
    EXPECT_THAT(namesIn(folder / "study/dualreg"), testing::SizeIs(4 * 6));
}

TEST_F(GroupAnalysis, StepsAndBatchesFindTheSameComponents) {
    ASSERT_EQ(group(all("whole")).status, 0);
    ASSERT_EQ(group(with({"plan", "steps"})).status, 0);
    for (const char* batch : {"2/2", "1/2"}) ASSERT_EQ(group({"reduce", "steps", "--batch", batch}).status, 0);
    ASSERT_EQ(group({"merge", "steps"}).status, 0);
    ASSERT_EQ(group({"ica", "steps", "--components", "4", "--repeats", "2"}).status, 0);
    for (const char* run : {"sub-01_task-rest", "sub-02_task-rest"}) {
        ASSERT_EQ(group({"back", "steps", "--only", run}).status, 0);
    }
    expectRefused(group({"report", "steps"}), "sub-03_task-rest, sub-04_task-rest have not been regressed");
    expectRefused(group({"back", "steps", "--only", "sub-05"}), "sub-05 is not a run of the study");
    ASSERT_EQ(group({"back", "steps"}).status, 0);
    ASSERT_EQ(group({"report", "steps"}).status, 0);
    const auto pairs = znica({"compare", (folder / "whole/ica").string(), (folder / "steps/ica").string()});
    EXPECT_THAT(pairs.out, HasSubstr("4 of 4 pairs above 0.8"));
    const auto ours = tableIn(folder / "whole/desc-groupICA_amplitudes.tsv");
    const auto theirs = tableIn(folder / "steps/desc-groupICA_amplitudes.tsv");
    ASSERT_EQ(ours.size(), 5U);
    EXPECT_NEAR(std::stod(ours[1][1]), std::stod(theirs[1][1]), 1e-3);
}

TEST_F(GroupAnalysis, EstimatesTheNumberOfComponents) {
    const CommandResult result = group(with({"all", "study", "--components", "auto", "--repeats", "2"}));
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr(", the median of the runs' estimates ("));
    const auto record = nlohmann::json::parse(textOf(folder / "study/desc-groupICA_decomposition.json"));
    EXPECT_EQ(record["ComponentsOfRuns"].size(), 4U);
    // Four sources, and the fluctuations of at most 14 axial slices that hold brain.
    EXPECT_GE(record["ComponentsRequested"], 4);
    EXPECT_LE(record["ComponentsRequested"], 4 + 14);
    const auto recovery = znica({"score", folder / "study/ica", "--truth", folder / "sample"});
    const std::string lowest = "lowest: ";
    ASSERT_THAT(recovery.out, HasSubstr(lowest));
    EXPECT_GE(std::stod(recovery.out.substr(recovery.out.find(lowest) + lowest.size())), 0.95);
}

TEST_F(GroupAnalysis, TemporalValuesOfTheGroupAreMissing) {
    ASSERT_EQ(group(all("study")).status, 0);
    const auto table = tableIn(folder / "study/desc-groupICA_metrics.tsv");
    for (std::size_t column = 0; column < table[0].size(); ++column) {
        const std::string& name = table[0][column];
        const bool temporal = name == "rms" || name == "lag1_autocorr" || name.starts_with("power_band") ||
                              name == "temporal_entropy" || name == "explained_variance";
        const bool spatial = name == "map_skewness" || name == "map_kurtosis" || name == "stability_iq";
        if (!temporal && !spatial) continue;
        EXPECT_EQ(table[1][column] == "n/a", temporal) << name;
    }
}

TEST_F(GroupAnalysis, GoesOnWhereItWasKilled) {
    ASSERT_EQ(group(all("whole")).status, 0);
    std::vector<std::string> arguments = all("killed");
    arguments.insert(arguments.begin(), "group");
    for (int milliseconds = 5; milliseconds < 300; milliseconds += 30) { // in every step, on most machines
        RunningCommand command(arguments, {folder.path(), {}, {}});
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        command.end(SIGKILL);
    }
    ASSERT_EQ(group(all("killed")).status, 0);
    EXPECT_EQ(resultsIn("whole"), resultsIn("killed"));
    for (const char* part : {"", "dualreg", "reduction"}) {
        EXPECT_THAT(namesIn(folder / "killed" / part), Each(testing::Not(HasSubstr("unfinished")))) << part;
    }
}

} // namespace
} // namespace zn::test
