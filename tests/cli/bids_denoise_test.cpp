// Denoising within `znica bids`: which images, from which labels, what is repeated.
#include "cli/bids_study.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include <gmock/gmock.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class BidsDenoise : public Bids {
protected:
    void label(const std::string& file, const std::string& rows = "ICA_01\tnoise\trim\n") const {
        fs::create_directories((labels / file).parent_path());
        writeFile(labels / file, "component\tclassification\tnote\n" + rows);
    }
    void labelBoth() const {
        label("sub-01_task-rest_desc-ICA_labels.tsv");
        label("sub-02_task-rest_desc-ICA_labels.tsv");
    }
    CommandResult denoise(std::vector<std::string> options = {}) const {
        options.insert(options.end(), {"--labels-dir", labels, "--denoise", "nonaggr", "--no-report"});
        return analyse(options);
    }
    // File systems with coarse clocks cannot order what follows within a tick.
    static void letTimePass() { std::this_thread::sleep_for(std::chrono::milliseconds(20)); }

    fs::path recordFile(const std::string& run) const { return out / "logs/denoise" / (run + ".json"); }
    nlohmann::json denoised(const std::string& run) const { return nlohmann::json::parse(textOf(recordFile(run))); }
    std::string message(const std::string& run) const { return denoised(run)["Message"].get<std::string>(); }
    fs::path image(const std::string& subject, const std::string& method = "nonaggr") const {
        return out / subject / "func" / (subject + "_task-rest_desc-" + method + "Denoised_bold.nii.gz");
    }

    const fs::path labels = folder / "labels";
};

TEST_F(BidsDenoise, GivesTheFilesOfSingleCommandsInOneGo) {
    labelBoth();
    const CommandResult result = denoise();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(lastLine(result.out), "2 of 2 runs done; 2 of 2 denoised");

    ASSERT_EQ(znica({"run", imageOf("sub-02"), "--out", folder / "ica", "--components", "3", "--seed", "1"}).status, 0);
    ASSERT_EQ(znica({"denoise", folder / "ica", imageOf("sub-02"), "--out", folder / "clean", "--labels",
                     labels / "sub-02_task-rest_desc-ICA_labels.tsv", "--no-report"})
                  .status,
              0);
    int compared = 0;
    for (const std::string& name : namesIn(folder / "clean")) {
        if (name.find("Denoised_bold.json") != std::string::npos || !name.starts_with("sub-")) continue;
        std::string placed = name;
        if (const auto at = name.find("desc-ICA_timeseries"); at != std::string::npos)
            placed.replace(at, 8, "desc-denoise");
        EXPECT_EQ(textOf(out / "sub-02/func" / placed), textOf(folder / "clean" / name)) << name;
        ++compared;
    }
    EXPECT_GE(compared, 13); // image, courses, evidence
    EXPECT_EQ(denoised("sub-02_task-rest")["Quality"]["components"]["After"], 2);
}

TEST_F(BidsDenoise, AddsImagesToAFinishedStudyWithoutAnalysingAgain) {
    ASSERT_EQ(analyse().status, 0);
    const auto analysed = fs::last_write_time(out / "logs/sub-01_task-rest.json");
    const std::string courses = textOf(out / "sub-01/func/sub-01_task-rest_desc-ICA_timeseries.tsv");
    letTimePass();
    labelBoth();
    const CommandResult first =
        znica({"bids", data, out, "participant", "--labels-dir", labels, "--denoise", "nonaggr"});
    EXPECT_EQ(first.status, 0) << first.err;
    EXPECT_THAT(first.out, HasSubstr("2 of 2 runs keep their results, although settings"));
    EXPECT_EQ(lastLine(first.out), "2 of 2 runs done; 2 of 2 denoised");
    EXPECT_EQ(fs::exists(out / "sub-01_task-rest_denoised.html"), REPORT_IS_BUILT != 0);
    const auto written = fs::last_write_time(recordFile("sub-01_task-rest"));
    const CommandResult again =
        znica({"bids", data, out, "participant", "--labels-dir", labels, "--denoise", "nonaggr"});
    EXPECT_THAT(again.out, HasSubstr("2 of 2 runs have a record of denoising with the same settings and labels"));
    EXPECT_EQ(lastLine(again.out), "2 of 2 runs done; 2 of 2 denoised");
    EXPECT_EQ(fs::last_write_time(recordFile("sub-01_task-rest")), written);
    EXPECT_EQ(fs::last_write_time(out / "logs/sub-01_task-rest.json"), analysed);
    EXPECT_EQ(textOf(out / "sub-01/func/sub-01_task-rest_desc-ICA_timeseries.tsv"), courses);
}

TEST_F(BidsDenoise, DenoisesAgainWhatHasNewLabels) {
    labelBoth();
    ASSERT_EQ(denoise().status, 0);
    letTimePass();
    label("sub-02_task-rest_desc-ICA_labels.tsv", "ICA_00\tnoise\t\nICA_02\tnoise\t\n");
    EXPECT_THAT(denoise().out, HasSubstr("Images to denoise: 1;"));
    EXPECT_EQ(denoised("sub-02_task-rest")["Quality"]["components"]["After"], 1);
}

TEST_F(BidsDenoise, FindsLabelsInTheFoldersOfSubjects) {
    label("sub-01/sub-01_task-rest_desc-ICA_labels.tsv");
    label("sub-02/func/sub-02_task-rest_desc-ICA_labels (1).tsv"); // as browsers name a second download
    label("sub-02_task-restless_desc-ICA_labels.tsv");
    EXPECT_EQ(lastLine(denoise().out), "2 of 2 runs done; 2 of 2 denoised");
}

TEST_F(BidsDenoise, CountsRunsWithoutLabelsWhichAreNoError) {
    label("sub-01_task-rest_desc-ICA_labels.tsv");
    const CommandResult result = denoise();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("Without labels, and therefore not denoised: sub-02_task-rest.\n"));
    EXPECT_EQ(lastLine(result.out), "2 of 2 runs done; 1 of 2 denoised, 1 without labels: sub-02_task-rest");
    EXPECT_FALSE(fs::exists(recordFile("sub-02_task-rest")));
    const CommandResult group = znica({"bids", data, out, "group"});
    EXPECT_THAT(group.out, StartsWith("2 of 2 runs done; 1 of 2 denoised, 1 not denoised: sub-02_task-rest; overview"));
    EXPECT_THAT(textOf(out / "runs.tsv"), HasSubstr("Not denoised: it has no labels"));
}

TEST_F(BidsDenoise, RecordsUnusableLabelsAndGoesOn) {
    label("sub-01_task-rest_desc-ICA_labels.tsv", "ICA_07\tnoise\t\n");
    label("sub-02_task-rest_desc-ICA_labels.tsv");
    const CommandResult result = denoise();
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(lastLine(result.out), "2 of 2 runs done; 1 of 2 denoised, 1 failed: sub-01_task-rest");
    EXPECT_EQ(denoised("sub-01_task-rest")["ExitStatus"], 3);
    EXPECT_THAT(message("sub-01_task-rest"), EndsWith("names ICA_07, but the result has ICA_00 to ICA_02; use the "
                                                      "labels of this result."));
    EXPECT_FALSE(fs::exists(image("sub-01")));
    EXPECT_TRUE(fs::exists(image("sub-02")));
    EXPECT_EQ(denoise().status, 3); // not repeated
    EXPECT_THAT(denoise({"--rerun", "failed"}).out, HasSubstr("Images to denoise: 1;"));
}

TEST_F(BidsDenoise, DoesNotChooseBetweenTwoTablesOfLabels) {
    labelBoth();
    label("sub-01/sub-01_task-rest_desc-ICA_labels.tsv");
    EXPECT_EQ(denoise().status, 3);
    EXPECT_THAT(message("sub-01_task-rest"), AllOf(StartsWith("sub-01_task-rest has two tables of labels, "),
                                                   EndsWith("; keep the one that is valid.")));
    EXPECT_TRUE(fs::exists(image("sub-02")));
}

TEST_F(BidsDenoise, SaysWhyThereIsNothingToDenoise) {
    labelBoth();
    fs::resize_file(imageOf("sub-01"), 5000);
    EXPECT_EQ(denoise().status, 3);
    EXPECT_THAT(message("sub-01_task-rest"),
                AllOf(StartsWith("the analysis of the run left no result: "), HasSubstr("is truncated or damaged")));
    EXPECT_TRUE(fs::exists(image("sub-02")));
    letTimePass();
    addImage("sub-01", "1");
    EXPECT_EQ(lastLine(denoise().out), "2 of 2 runs done; 2 of 2 denoised");
}

TEST_F(BidsDenoise, RefusesAnImageThatIsNewerThanItsResult) {
    labelBoth();
    ASSERT_EQ(analyse().status, 0);
    letTimePass();
    addImage("sub-01", "2");
    EXPECT_EQ(denoise().status, 3);
    EXPECT_THAT(message("sub-01_task-rest"), HasSubstr("is newer than its result, to which the labels belong"));
    EXPECT_EQ(denoise({"--rerun", "all"}).status, 0);
}

TEST_F(BidsDenoise, WarnsOfLabelsThatAreOlderThanTheResult) {
    labelBoth();
    letTimePass();
    const CommandResult result = denoise();
    EXPECT_THAT(result.err, HasSubstr("older than the result, and valid only if it repeats the one that was labelled: "
                                      "sub-01_task-rest, sub-02_task-rest.\n"));
    EXPECT_THAT(denoised("sub-01_task-rest")["Notes"][0].get<std::string>(), StartsWith("The labels are older"));
}

TEST_F(BidsDenoise, KeepsTheImageOfOneMethod) {
    labelBoth();
    ASSERT_EQ(denoise().status, 0);
    ASSERT_EQ(analyse({"--labels-dir", labels, "--denoise", "aggr", "--no-report"}).status, 0);
    EXPECT_TRUE(fs::exists(image("sub-01", "aggr")));
    EXPECT_FALSE(fs::exists(image("sub-01")));
}

TEST_F(BidsDenoise, IsUndoneByANewResult) {
    labelBoth();
    ASSERT_EQ(denoise().status, 0);
    ASSERT_EQ(analyse().status, 0); // with a report: other settings
    for (const std::string& name : namesIn(out / "sub-01/func")) EXPECT_THAT(name, Not(HasSubstr("enoise")));
    EXPECT_TRUE(namesIn(out / "logs/denoise").empty());
}

TEST_F(BidsDenoise, IsInTheTableOfRuns) {
    label("sub-01_task-rest_desc-ICA_labels.tsv");
    label("sub-02_task-rest_desc-ICA_labels.tsv", "ICA_01\tbad\t\n");
    EXPECT_EQ(denoise().status, 3);
    const CommandResult group = znica({"bids", data, out, "group"});
    EXPECT_THAT(group.out, StartsWith("2 of 2 runs done; 1 of 2 denoised, 1 failed: sub-02_task-rest; overview: "));
    const auto table = tableIn(out / "runs.tsv");
    const auto cell = [&](std::size_t row, const std::string& column) {
        const auto found = std::find(table[0].begin(), table[0].end(), column);
        return found == table[0].end() ? "no column" : table[row][static_cast<std::size_t>(found - table[0].begin())];
    };
    EXPECT_EQ(cell(1, "denoised"), "nonaggr");
    const auto measures = tableIn(out / "sub-01/func/sub-01_task-rest_desc-denoise_qc.tsv");
    EXPECT_THAT(measures[2], ElementsAre("dvars_median", cell(1, "dvars_before"), cell(1, "dvars_after"), testing::_));
    EXPECT_THAT(measures[4], ElementsAre("tsnr_median", cell(1, "tsnr_before"), cell(1, "tsnr_after"), testing::_));
    EXPECT_EQ(cell(1, "degrees_of_freedom_after"), "78"); // 80 volumes, less the mean and one component
    EXPECT_EQ(cell(1, "framewise_displacement"), "n/a");
    EXPECT_EQ(cell(2, "denoised"), "failed");
    EXPECT_THAT(cell(2, "denoising_message"), HasSubstr("holds the label \"bad\""));
    EXPECT_EQ(cell(2, "dvars_before"), "n/a");
    const auto columns = nlohmann::json::parse(textOf(out / "runs.json"));
    for (const char* column : {"denoised", "dvars_before", "dvars_fd_after", "denoising_message"}) {
        EXPECT_TRUE(columns.contains(column)) << column;
    }
}

TEST_F(BidsDenoise, UsesTheConfoundsOfEachRun) {
    const fs::path prep = folder / "prep/sub-01/func";
    fs::create_directories(prep);
    writeFile(folder / "prep/dataset_description.json", R"({"Name": "p", "DatasetType": "derivative"})");
    fs::copy_file(imageOf("sub-01"), prep / "sub-01_task-rest_desc-preproc_bold.nii.gz");
    writeFile(prep / "sub-01_task-rest_desc-preproc_bold.json", R"({"RepetitionTime": 2})");
    std::string table = "csf\tframewise_displacement\ttrans_x\n";
    for (int t = 0; t < 80; ++t) {
        table += std::to_string(t % 7) + "\t" + (t == 0 ? "n/a" : "0." + std::to_string(t % 5)) + "\t" +
                 std::to_string(t % 3) + "\n";
    }
    writeFile(prep / "sub-01_task-rest_desc-confounds_timeseries.tsv", table);
    label("sub-01_task-rest_desc-ICA_labels.tsv");
    const std::vector<std::string> fmriprep = {"-d", folder / "prep", "--confounds", "auto"};
    ASSERT_EQ(denoise(fmriprep).status, 0);
    const auto sidecar = [&] {
        fs::path file = image("sub-01");
        return nlohmann::json::parse(textOf(file.replace_extension().replace_extension(".json")))["Denoising"];
    };
    EXPECT_TRUE(sidecar()["Confounds"].empty());
    // t % 5 / 10 over 79 volumes from 1: 15 x (0 + 1 + 2 + 3 + 4) + 1 + 2 + 3 + 4 = 160 tenths.
    EXPECT_NEAR(denoised("sub-01_task-rest")["Quality"]["framewise_displacement_mean"]["Before"].get<double>(),
                16.0 / 79.0, 1e-6);

    auto chosen = fmriprep;
    chosen.insert(chosen.end(), {"--columns", "csf,trans_x"});
    ASSERT_EQ(denoise(chosen).status, 0);
    EXPECT_THAT(sidecar()["Confounds"].get<std::vector<std::string>>(), ElementsAre("csf", "trans_x"));
}

TEST_F(BidsDenoise, ListsLabelsWithTheRuns) {
    label("sub-02_task-rest_desc-ICA_labels.tsv");
    writeFile(folder / "list.tsv", denoise({"--list"}).out);
    const auto table = tableIn(folder / "list.tsv");
    EXPECT_EQ(table[1][10], "n/a");
    EXPECT_EQ(table[2][10], (labels / "sub-02_task-rest_desc-ICA_labels.tsv").string());
}

TEST_F(BidsDenoise, NeedsLabelsAndAMethod) {
    const auto complaint = [&](const std::vector<std::string>& options, int status) {
        const CommandResult refused = analyse(options);
        EXPECT_EQ(refused.status, status) << refused.err;
        return refused.err;
    };
    EXPECT_THAT(complaint({"--labels-dir", labels}, 2), StartsWith("znica: --labels-dir requires --denoise"));
    EXPECT_THAT(complaint({"--denoise", "aggr"}, 2), StartsWith("znica: --denoise requires --labels-dir"));
    EXPECT_THAT(complaint({"--labels-dir", labels, "--denoise", "soft"}, 2),
                StartsWith("znica: --denoise: needs nonaggr, aggr or orthaggr; got soft"));
    EXPECT_THAT(complaint({"--labels-dir", labels, "--denoise", "aggr"}, 3),
                HasSubstr("labels is not a folder; name the one that holds the tables of labels."));
}

} // namespace
} // namespace zn::test
