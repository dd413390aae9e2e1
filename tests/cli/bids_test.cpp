// `znica bids` on small simulated datasets: what it writes, what it repeats, and how it ends.
#include "cli/bids_study.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(Bids, WritesADerivativeDataset) {
    const CommandResult result = analyse();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(lastLine(result.out), "2 of 2 runs done");
    EXPECT_TRUE(record("sub-01_task-rest")["Message"] == "" || REPORT_IS_BUILT == 0);
    EXPECT_EQ(json::parse(textOf(out / "dataset_description.json"))["DatasetType"], "derivative");
    EXPECT_EQ(fs::exists(out / "sub-01_task-rest.html"), REPORT_IS_BUILT != 0);
    EXPECT_THAT(namesIn(out / "logs"), ElementsAre("sub-01_task-rest.json", "sub-01_task-rest.log",
                                                   "sub-02_task-rest.json", "sub-02_task-rest.log"));
    std::vector<std::string> names;
    for (const std::string& name : namesIn(out / "sub-01/func")) {
        ASSERT_THAT(name, StartsWith("sub-01_task-rest_desc-"));
        names.push_back(name.substr(22));
    }
    EXPECT_THAT(names, ElementsAre("ICA_components.json", "ICA_components.nii.gz", "ICA_decomposition.json",
                                   "ICA_metrics.json", "ICA_metrics.tsv", "ICA_mixing.json", "ICA_mixing.tsv",
                                   "ICA_plugin", "ICA_timeseries.json", "ICA_timeseries.tsv", "brain_mask.json",
                                   "brain_mask.nii.gz", "mean_bold.json", "mean_bold.nii.gz"));
}

TEST_F(Bids, GivesTheBytesOfSingleRunsWithAnyNumberOfProcesses) {
    ASSERT_EQ(analyse({"--nprocs", "1"}).status, 0);
    const std::string one = components("sub-02");
    ASSERT_EQ(analyse({"--nprocs", "2", "--rerun", "all"}).status, 0);
    EXPECT_EQ(components("sub-02"), one);
    ASSERT_EQ(znica({"run", imageOf("sub-02"), "--out", folder / "one", "--components", "3", "--seed", "1"}).status, 0);
    for (const char* name : {"desc-ICA_components.nii.gz", "desc-ICA_mixing.tsv", "desc-ICA_metrics.tsv",
                             "desc-ICA_timeseries.tsv", "desc-brain_mask.nii.gz", "desc-mean_bold.nii.gz"}) {
        const std::string file = std::string("sub-02_task-rest_") + name;
        EXPECT_EQ(textOf(out / "sub-02/func" / file), textOf(folder / "one" / file)) << name;
    }
    EXPECT_EQ(textOf(out / "sub-02/func/sub-02_task-rest_desc-ICA_plugin/ICA.vox"),
              textOf(folder / "one/plugin/ICA.vox"));
}

TEST_F(Bids, RecordsADamagedImageAndGoesOn) {
    fs::resize_file(imageOf("sub-01"), 5000);
    const CommandResult result = analyse();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(lastLine(result.out), "1 of 2 runs done, 1 without result: sub-01_task-rest");
    EXPECT_EQ(record("sub-01_task-rest")["ExitStatus"], 3);
    EXPECT_THAT(record("sub-01_task-rest")["Message"].get<std::string>(), HasSubstr("is truncated or damaged"));
    EXPECT_FALSE(fs::exists(out / "sub-01"));
}

TEST_F(Bids, RepeatsOnlyWhatIsNotDone) {
    fs::resize_file(imageOf("sub-01"), 5000);
    EXPECT_EQ(analyse().status, 3);
    const auto firstRecord = fs::last_write_time(out / "logs/sub-02_task-rest.json");
    EXPECT_THAT(analyse().out, HasSubstr("2 of 2 runs have a record")); // the image is still damaged
    EXPECT_THAT(analyse({"--rerun", "failed"}).out, HasSubstr("1 of 2 runs has a record with")); // tried again
    addImage("sub-01", "1");
    const CommandResult repaired = analyse();
    EXPECT_EQ(repaired.status, 0) << repaired.out << repaired.err;
    EXPECT_THAT(repaired.out, HasSubstr("[1 of 1] sub-01_task-rest: done"));
    EXPECT_EQ(fs::last_write_time(out / "logs/sub-02_task-rest.json"), firstRecord);
    EXPECT_THAT(analyse({"--smooth", "0"}).out, HasSubstr("Runs to do: 2")); // other settings
    EXPECT_THAT(analyse({"--smooth", "0", "--rerun", "all"}).out, HasSubstr("Runs to do: 2"));
}

TEST_F(Bids, ReplacesAnEarlierResultEntirely) {
    ASSERT_EQ(analyse({"--repeats", "2"}).status, 0);
    const fs::path centrotypes = out / "sub-01/func/sub-01_task-rest_desc-ICA_centrotypes.nii.gz";
    EXPECT_TRUE(fs::exists(centrotypes));
    ASSERT_EQ(analyse().status, 0);
    EXPECT_FALSE(fs::exists(centrotypes));
    EXPECT_FALSE(fs::exists(out / "sub-01/func/sub-01_task-rest_desc-ICA_centrotypes.json"));
}

TEST_F(Bids, SaysBeforehandWhichResultsAreReplaced) {
    ASSERT_EQ(analyse().status, 0);
    EXPECT_EQ(analyse().err, "");
    EXPECT_THAT(analyse({"--only", "sub-02_task-rest"}).out,
                HasSubstr("1 of 1 run has a record with the same settings"));
    const CommandResult one = analyse({"--only", "sub-02_task-rest", "--smooth", "0"});
    EXPECT_EQ(one.err,
              "znica: 1 run has a result with other settings, to be replaced (sub-02_task-rest: --components 3 "
              "--seed 1); to keep it, interrupt this command and name another OUT_DIR.\n");
    const CommandResult both = znica({"bids", data, out, "participant", "--components", "2"});
    EXPECT_EQ(both.err,
              "znica: 2 runs have results with other settings, to be replaced (sub-01_task-rest: --components "
              "3 --seed 1); to keep them, interrupt this command and name another OUT_DIR.\n");
}

TEST_F(Bids, KeepsAnEarlierResultWhenALaterTryFails) {
    ASSERT_EQ(analyse().status, 0);
    const std::string earlier = components("sub-01");
    const json before = record("sub-01_task-rest");
    writeFile(folder / "short.tsv", "task\n0\n1\n0\n"); // three values for eighty volumes
    const std::vector<std::string> wrong = {"--design", folder / "short.tsv"};

    const CommandResult failed = analyse(wrong);
    EXPECT_EQ(failed.status, 3);
    EXPECT_EQ(lastLine(failed.out), "0 of 2 runs done, 2 without a new result: sub-01_task-rest, sub-02_task-rest");
    EXPECT_THAT(failed.out, HasSubstr("The earlier result is kept."));
    EXPECT_EQ(record("sub-01_task-rest"), before);
    EXPECT_EQ(components("sub-01"), earlier);
    const CommandResult again = analyse(wrong); // another try would not change it
    EXPECT_EQ(again.status, 3);
    EXPECT_EQ(lastLine(again.out), lastLine(failed.out));
    EXPECT_THAT(again.out, HasSubstr("2 of 2 runs have a record"));
    znica({"bids", data, out, "group"});
    EXPECT_THAT(textOf(out / "runs.tsv"), HasSubstr("A later try, with other settings or another input, left no "));

    const CommandResult back = analyse();
    EXPECT_EQ(back.status, 0);
    EXPECT_THAT(back.out, HasSubstr("2 of 2 runs have a record"));
    EXPECT_TRUE(namesIn(out / "logs/failed").empty());
}

TEST_F(Bids, ANewResultEndsWhatAFailedTryLeft) {
    ASSERT_EQ(analyse().status, 0);
    writeFile(folder / "short.tsv", "task\n0\n1\n0\n");
    ASSERT_EQ(analyse({"--design", folder / "short.tsv"}).status, 3);
    ASSERT_EQ(analyse({"--smooth", "0"}).status, 0);
    EXPECT_TRUE(namesIn(out / "logs/failed").empty());
    EXPECT_EQ(lastLine(analyse({"--smooth", "0"}).out), "2 of 2 runs done");
}

TEST_F(Bids, HasStatusFourWhenTheWorstRunLacksComponents) {
    const CommandResult fewer = znica({"bids", data, out, "participant", "--only", "sub-01_task-rest", "--components",
                                       "30", "--max-iterations", "3", "--approach", "deflation", "--seed", "1"});
    EXPECT_EQ(fewer.status, 4) << fewer.out << fewer.err;
    EXPECT_THAT(lastLine(fewer.out), HasSubstr("0 of 1 run done, 1 with fewer components"));
    EXPECT_TRUE(fs::exists(out / "sub-01/func"));
}

TEST_F(Bids, ListsRunsWithRepetitionTimeAndMemory) {
    writeFile(data / "sub-02/sub-02_bold.json", R"({"RepetitionTime": 2000})");
    const CommandResult result = analyse({"--list"});
    EXPECT_EQ(result.status, 0);
    writeFile(folder / "list.tsv", result.out);
    const auto table = tableIn(folder / "list.tsv");
    ASSERT_EQ(table.size(), 3U);
    EXPECT_THAT(table[0], ElementsAre("run", "repetition_time", "volumes", "memory_mib", "dummy_scans", "mask",
                                      "confounds", "events", "image", "problem", "labels"));
    EXPECT_EQ(table[1][0] + " " + table[1][1] + " " + table[1][2], "sub-01_task-rest 2 80");
    EXPECT_GT(std::stoi(table[1][3]), 10);
    EXPECT_EQ(table[2][1], "n/a");
    EXPECT_THAT(table[2][9], HasSubstr("sub-02_bold.json says 2000 s"));
    EXPECT_FALSE(fs::exists(out));
}

TEST_F(Bids, SaysWhatIsWrongWithTheFolders) {
    const auto complaint = [&](const fs::path& results) {
        const CommandResult refused = znica({"bids", data, results, "participant"});
        EXPECT_NE(refused.status, 0) << results;
        return refused.err;
    };
    EXPECT_THAT(complaint(data), HasSubstr("are the same folder"));
    EXPECT_THAT(complaint(data / "results"), HasSubstr("lies inside the dataset"));
    EXPECT_THAT(complaint(folder.path()), HasSubstr("lies inside OUT_DIR"));
    writeFile(folder / "file", "");
    EXPECT_THAT(complaint(folder / "file"), HasSubstr("is not a folder"));
    fs::create_directories(folder / "foreign");
    writeFile(folder / "foreign/dataset_description.json", R"({"GeneratedBy": [{"Name": "other"}]})");
    EXPECT_THAT(complaint(folder / "foreign"), HasSubstr("is a dataset that znica did not make"));
    EXPECT_THAT(complaint("/proc/nothing"), HasSubstr("/proc/nothing cannot be written to"));
    EXPECT_FALSE(fs::exists(data / "results"));
}

TEST_F(Bids, MayWriteIntoTheDerivativesOfTheDataset) {
    EXPECT_EQ(znica({"bids", data, data / "derivatives/znica", "participant", "--only", "sub-01_task-rest"}).status, 0);
}

TEST_F(Bids, RefusesResultsOfAnotherVersion) {
    ASSERT_EQ(analyse().status, 0);
    json other = record("sub-01_task-rest");
    other["Version"] = "1.0";
    writeFile(out / "logs/sub-01_task-rest.json", other.dump());
    const CommandResult refused = analyse();
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("was written by znica 1.0, this is"));
    EXPECT_EQ(analyse({"--rerun", "all"}).status, 0);
}

TEST_F(Bids, SaysHowToAllowMoreMemory) {
    const CommandResult result = analyse({"--mem", "1"});
    EXPECT_EQ(result.status, 5);
    EXPECT_THAT(result.out, HasSubstr("; memory: 1 MiB.\n"));
    EXPECT_THAT(
        record("sub-01_task-rest")["Message"].get<std::string>(),
        testing::ContainsRegex("needs about [0-9]+ MiB of memory, but 1 MiB are allowed by --mem; .* allow more "
                               "with --mem MIB.$"));
}

TEST_F(Bids, StopsAfterTheFirstCrashIfAsked) {
    fs::resize_file(imageOf("sub-01"), 5000);
    const CommandResult result = analyse({"--stop-on-first-crash", "--nprocs", "1"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(lastLine(result.out),
                HasSubstr("0 of 2 runs done, 2 without result: sub-01_task-rest, sub-02_task-rest"));
    EXPECT_FALSE(fs::exists(out / "logs/sub-02_task-rest.json"));
}

TEST_F(Bids, KeepsFinishedRunsWhenInterrupted) {
    ASSERT_EQ(
        znica({"bids", data, out, "participant", "--only", "sub-01_task-rest", "--components", "3", "--seed", "1"})
            .status,
        0);
    RunningCommand running({"bids", data, out, "participant", "--components", "3", "--seed", "1", "--repeats", "1000"},
                           {});
    for (int i = 0; i < 1000 && !fs::exists(out / "logs/sub-02_task-rest.log"); ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    const json earlier = record("sub-01_task-rest");
    const CommandResult ended = running.end(SIGTERM);
    EXPECT_EQ(ended.status, 143);
    EXPECT_EQ(record("sub-01_task-rest"), earlier); // its repetition was under way
    EXPECT_THAT(ended.err, HasSubstr("interrupted; "));
    EXPECT_THAT(ended.err, HasSubstr("give the same command again to continue"));
    for (const std::string& name : namesIn(out)) EXPECT_THAT(name, Not(HasSubstr("unfinished")));
    EXPECT_THAT(namesIn(out / "sub-01/func"), Not(testing::IsEmpty())); // of the earlier settings
    EXPECT_EQ(analyse().status, 0);
}

TEST_F(Bids, SurvivesARunThatCrashes) {
    const CommandResult result = analyse({"--plugin", FAKE_PLUGIN_FILE}, {{}, {"ZN_FAKE_PLUGIN=killed"}, {}});
    EXPECT_EQ(result.status, 128 + SIGKILL);
    EXPECT_THAT(result.out, HasSubstr("ended by signal 9 (Killed), which usually means that memory ran out"));
    EXPECT_THAT(lastLine(result.out), HasSubstr("0 of 2 runs done, 2 without result"));
    EXPECT_EQ(analyse({"--plugin", FAKE_PLUGIN_FILE}, {{}, {"ZN_FAKE_PLUGIN=killed"}, {}}).status, 137); // tried again
}

TEST_F(Bids, NamesWhatAJobOfAnotherMachineLeft) {
    const fs::path left = out / ".sub-01_task-rest.unfinished-00000000-17-0";
    fs::create_directories(left);
    EXPECT_EQ(analyse().err, "");
    fs::last_write_time(left, fs::file_time_type::clock::now() - std::chrono::hours(48));
    const std::string said = "holds " + left.filename().string() + ", which another machine or container began";
    EXPECT_THAT(znica({"bids", data, out, "group"}).err, HasSubstr(said));
    EXPECT_THAT(analyse().err, HasSubstr(said));
    EXPECT_EQ(analyse({"--only", "sub-01_task-rest"}).err, "");
    EXPECT_TRUE(fs::exists(left));
}

TEST_F(Bids, LeavesNothingOfARunThatCannotBeStarted) {
    fs::create_directories(out / "logs/sub-01_task-rest.log/in the way");
    const CommandResult result = analyse();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("sub-01_task-rest.log cannot be written: Is a directory."));
    EXPECT_THAT(lastLine(result.out), HasSubstr("1 of 2 runs done, 1 without result: sub-01_task-rest"));
    for (const std::string& name : namesIn(out)) EXPECT_THAT(name, Not(HasSubstr("unfinished")));
}

TEST_F(Bids, SaysThatSomeOptionsHaveNoEffect) {
    const CommandResult result = analyse({"-w", "/nowhere", "--skip-bids-validation", "--list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("--work-dir has no effect"));
    EXPECT_THAT(result.err, HasSubstr("--skip-bids-validation has no effect"));
}

TEST_F(Bids, ShowsAllRunsInATable) {
    fs::resize_file(imageOf("sub-02"), 5000);
    analyse();
    fs::remove_all(data); // the results alone count
    writeFile(out / "logs/sub-03_task-rest.log", "begun\nznica: needs more memory.\n");
    writeFile(out / "logs/sub-04_task-rest.json", "{ damaged");
    const CommandResult group = znica({"bids", data, out, "group"});
    EXPECT_EQ(group.status, 0) << group.err;
    EXPECT_THAT(group.out, HasSubstr("1 of 4 runs done, 3 without result: sub-02_task-rest, sub-03_task-rest, sub-04"));
    const auto table = tableIn(out / "runs.tsv");
    ASSERT_EQ(table.size(), 5U);
    EXPECT_EQ(table[1][4], "done");
    EXPECT_EQ(table[1][7], "3"); // components found
    EXPECT_EQ(table[2][4], "no result");
    EXPECT_EQ(table[2][5], "3");
    EXPECT_EQ(table[3][4], "no record");
    EXPECT_THAT(table[3].back(), HasSubstr("Its log says: needs more memory."));
    EXPECT_EQ(table[4][4], "no record");
    const json columns = json::parse(textOf(out / "runs.json"));
    for (const char* column : {"voxels", "stability", "outliers"}) EXPECT_TRUE(columns.contains(column)) << column;
    const char* overview = REPORT_IS_BUILT != 0 ? "index.html" : "runs.tsv";
    EXPECT_EQ(fs::exists(out / "index.html"), REPORT_IS_BUILT != 0);
    EXPECT_THAT(group.out, HasSubstr("; overview: " + (out / overview).string() + "\n"));
}

TEST_F(Bids, HasNothingToShowWithoutRecords) {
    EXPECT_THAT(znica({"bids", data, out, "group"}).err, HasSubstr("out does not exist; analyse the runs first"));
    fs::create_directories(out);
    const CommandResult group = znica({"bids", data, out, "group"});
    EXPECT_EQ(group.status, 3);
    EXPECT_THAT(group.err, HasSubstr("has no records (logs/sub-*.json)"));
}

} // namespace
} // namespace zn::test
