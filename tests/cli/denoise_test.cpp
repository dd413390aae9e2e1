// Removing rejected components from an image.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "cli/nifti_reading.h"
#include "files.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstring>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr int kVolumes = 24;
constexpr int kDummyScans = 2;

// One analysis for all tests: four components of an image after two dummy scans.
class Denoise : public testing::Test {
protected:
    static void SetUpTestSuite() {
        analysed_ = std::make_unique<TemporaryFolder>();
        writeFile(*analysed_ / "a_bold.nii", plainSeries(kVolumes).bytes());
        writeFile(*analysed_ / "a_bold.json", R"({"RepetitionTime": 2.0, "TaskName": "rest"})");
        const CommandResult done =
            znica({"run", bold(), "--components", "4", "--seed", "1", "--dummy-scans", "2", "--mask", "none", "--as-is",
                   "--no-report", "--epsilon", "0.5", "--out", result()});
        ASSERT_EQ(done.status, 0) << done.err;
    }
    static void TearDownTestSuite() { analysed_.reset(); }

    static std::string bold() { return (*analysed_ / "a_bold.nii").string(); }
    static std::string result() { return (*analysed_ / "result").string(); }
    std::string out() const { return (folder / "out").string(); }
    std::string file(const std::string& name, const std::string& text) const {
        writeFile(folder / name, text);
        return (folder / name).string();
    }
    std::string labels(const std::string& rows) const {
        return file("labels.tsv", "component\tclassification\tnote\n" + rows);
    }

    CommandResult denoise(const std::vector<std::string>& options, const std::string& image = bold()) const {
        std::vector<std::string> arguments = {"denoise", result(), image, "--out", out(), "--no-report"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    }
    // Refused with this status and one sentence that has this part; nothing is left behind.
    void expectRefusal(int status, const std::string& part, const std::vector<std::string>& options,
                       const std::string& image = bold()) const {
        const auto before = namesIn(folder.path());
        const CommandResult refused = denoise(options, image);
        EXPECT_EQ(refused.status, status) << refused.err;
        EXPECT_THAT(refused.err, AllOf(StartsWith("znica: "), HasSubstr(part)));
        EXPECT_EQ(std::count(refused.err.begin(), refused.err.end(), '\n'), 1) << refused.err;
        EXPECT_EQ(namesIn(folder.path()), before);
    }

    TemporaryFolder folder;

private:
    static std::unique_ptr<TemporaryFolder> analysed_;
};

std::unique_ptr<TemporaryFolder> Denoise::analysed_;

TEST_F(Denoise, WritesTheImageWithItsEvidence) {
    const CommandResult done = denoise({"--reject", "2, ICA_03"});
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("Components: 2 of 4 rejected: ICA_01, ICA_03.\n"));
    EXPECT_THAT(done.out, HasSubstr("Dummy scans: 2 volumes copied unchanged.\n"));
    EXPECT_THAT(done.out, HasSubstr("\nVariance over time (per cent of that before) "));
    EXPECT_THAT(
        namesIn(out()),
        ElementsAre(
            ".bidsignore", "a_desc-ICA_timeseries.json", "a_desc-ICA_timeseries.tsv", "a_desc-denoise_carpetAfter.json",
            "a_desc-denoise_carpetAfter.tsv", "a_desc-denoise_carpetBefore.json", "a_desc-denoise_carpetBefore.tsv",
            "a_desc-denoise_components.json", "a_desc-denoise_components.tsv", "a_desc-denoise_qc.json",
            "a_desc-denoise_qc.tsv", "a_desc-denoise_removedVariance.json", "a_desc-denoise_removedVariance.nii.gz",
            "a_desc-denoise_tsnrAfter.json", "a_desc-denoise_tsnrAfter.nii.gz", "a_desc-denoise_tsnrBefore.json",
            "a_desc-denoise_tsnrBefore.nii.gz", "a_desc-denoise_volumes.json", "a_desc-denoise_volumes.tsv",
            "a_desc-nonaggrDenoised_bold.json", "a_desc-nonaggrDenoised_bold.nii.gz", "dataset_description.json"));
    EXPECT_EQ(textOf(folder / "out/.bidsignore"), "report.html\n*_desc-ICA_*\n*_desc-denoise_*\n");
    const json map = json::parse(textOf(folder / "out/a_desc-denoise_removedVariance.json"));
    EXPECT_EQ(map["Units"], "per cent of the variance before");
    EXPECT_EQ(map["Sources"], json::array({bold()}));
    const json carpet = json::parse(textOf(folder / "out/a_desc-denoise_carpetAfter.json"));
    EXPECT_THAT(carpet["Description"].get<std::string>(), StartsWith("Carpet plot of the image denoised: "));
    const ReadNifti image(folder / "out/a_desc-nonaggrDenoised_bold.nii.gz");
    EXPECT_EQ(image.dim[4], kVolumes);
    EXPECT_EQ(image.dataType, 16); // single precision
    EXPECT_EQ(image.pixdim[4], 2.0f);
    EXPECT_EQ(image.sformCode, 1);
}

TEST_F(Denoise, NamesTheCoursesAfterTheirFate) {
    ASSERT_EQ(denoise({"--reject", "2,ICA_03"}).status, 0);
    const auto table = tableIn(folder / "out/a_desc-ICA_timeseries.tsv");
    EXPECT_THAT(table[0], ElementsAre("accepted_00", "rejected_01", "accepted_02", "rejected_03"));
    ASSERT_EQ(table.size(), 1U + kVolumes);
    EXPECT_THAT(table[kDummyScans], ElementsAre("n/a", "n/a", "n/a", "n/a"));
    const auto analysed = tableIn(std::filesystem::path(result()) / "a_desc-ICA_timeseries.tsv");
    EXPECT_EQ(table[kDummyScans + 1][3], analysed[1][3]);
    EXPECT_EQ(table[kVolumes][0], analysed[kVolumes - kDummyScans][0]);
}

TEST_F(Denoise, GivesEveryVolumeOfTheImageARow) {
    ASSERT_EQ(denoise({"--reject", "2"}).status, 0);
    const auto table = tableIn(folder / "out/a_desc-denoise_volumes.tsv");
    ASSERT_EQ(table.size(), 1U + kVolumes);
    EXPECT_THAT(table[kDummyScans], ElementsAre("n/a", "n/a"));
    EXPECT_THAT(table[kDummyScans + 1], ElementsAre("n/a", "n/a")); // DVARS of the first analysed volume
    EXPECT_THAT(table[kDummyScans + 2], Not(Contains("n/a")));
}

TEST_F(Denoise, RecordsMethodReasonsSoftwareAndInputs) {
    const std::string file = labels("ICA_00\tsignal\tn/a\nICA_02\tnoise\tedge of the \"head\"\n");
    ASSERT_EQ(denoise({"--labels", file, "--method", "orthaggr", "--high-pass", "30"}).status, 0);
    const json record = json::parse(textOf(folder / "out/a_desc-orthaggrDenoised_bold.json"));
    EXPECT_EQ(record["TaskName"], "rest"); // from the original's sidecar
    EXPECT_EQ(record["RepetitionTime"], 2.0);
    EXPECT_EQ(record["GeneratedBy"]["Name"], "znica");
    const json& denoising = record["Denoising"];
    EXPECT_EQ(denoising["Method"], "orthaggr");
    EXPECT_EQ(denoising["Rejected"],
              json::parse(R"([{"Name": "ICA_02", "Number": 3, "Reason": "edge of the \"head\""}])"));
    EXPECT_EQ(denoising["KeptWithoutLabel"], (json{"ICA_01", "ICA_03"}));
    EXPECT_EQ(denoising["CosinesRemoved"], 2); // periods 88 and 44 s of 22 volumes
    EXPECT_EQ(denoising["DegreesOfFreedomLost"], 3);
    ASSERT_EQ(record["Inputs"].size(), 3U);
    EXPECT_EQ(record["Inputs"][2]["File"], file);
    EXPECT_EQ(record["Inputs"][2]["SHA256"].get<std::string>().size(), 64U);
}

TEST_F(Denoise, WritesTheRepetitionTimeWithAllItsDigits) {
    std::filesystem::copy(result(), folder / "copy", std::filesystem::copy_options::recursive);
    const std::filesystem::path record = folder / "copy/a_desc-ICA_decomposition.json";
    json changed = json::parse(textOf(record));
    changed["Input"]["RepetitionTime"] = 0.7215;
    changed["Input"]["RepetitionTimeMilliseconds"] = 722;
    writeFile(record, changed.dump());
    ASSERT_EQ(
        znica({"denoise", (folder / "copy").string(), bold(), "--reject", "2", "--no-report", "--out", out()}).status,
        0);
    EXPECT_EQ(json::parse(textOf(folder / "out/a_desc-nonaggrDenoised_bold.json"))["RepetitionTime"], 0.7215);
}

TEST_F(Denoise, CountsComponentsWithoutALabelAloud) {
    const CommandResult done = denoise({"--labels", labels("ICA_00\tnoise\t\nICA_03\tunsure\t\n")});
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("Components: 1 of 4 rejected: ICA_00.\n"
                                    "Components: 2 without a label, kept: ICA_01, ICA_02.\n"
                                    "Components: labelled unsure, kept: ICA_03.\n"));
}

TEST_F(Denoise, WondersAboutLabelsWithTheNameOfAnotherResult) {
    const std::string rows = "component\tclassification\tnote\nICA_00\tnoise\tn/a\n";
    const CommandResult other = denoise({"--labels", file("b_desc-ICA_labels.tsv", rows)});
    EXPECT_THAT(other.out, HasSubstr("Labels: b_desc-ICA_labels.tsv has the name of another result than that of a;"));
    const CommandResult own = denoise({"--labels", file("a_desc-ICA_labels.tsv", rows), "--force"});
    EXPECT_THAT(own.out, Not(HasSubstr("Labels:")));
}

TEST_F(Denoise, WondersAboutTheImageOfAnotherSubject) {
    std::filesystem::create_directory(folder / "renamed");
    for (const std::string& name : namesIn(result())) {
        if (!name.starts_with("a_")) continue;
        std::filesystem::copy(result() + "/" + name, folder / ("renamed/sub-01_task-rest" + name.substr(1)));
    }
    const auto notesOn = [&](const std::string& image) {
        return znica({"denoise", (folder / "renamed").string(), file(image, plainSeries(kVolumes).bytes()), "--reject",
                      "1", "--no-report", "--out", out(), "--force"});
    };
    EXPECT_THAT(notesOn("sub-02_task-rest_bold.nii").out,
                HasSubstr("Image: sub-02_task-rest_bold.nii is named sub-02, but the result sub-01; check that they "
                          "belong together.\n"));
    const CommandResult own = notesOn("sub-01_task-rest_desc-smooth_bold.nii");
    EXPECT_EQ(own.status, 0) << own.err;
    EXPECT_THAT(own.out, Not(HasSubstr("Image:")));
}

TEST_F(Denoise, SaysThatTheAnalysisWasFiltered) {
    const std::filesystem::path copy = folder / "copy";
    std::filesystem::copy(result(), copy);
    json record = json::parse(textOf(copy / "a_desc-ICA_decomposition.json"));
    record["Preparation"]["HighPassSeconds"] = 40;
    writeFile(copy / "a_desc-ICA_decomposition.json", record.dump());
    const auto run = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"denoise", copy.string(), bold(), "--reject", "1", "--out", out()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    };
    EXPECT_THAT(run({"--no-report"}).out, HasSubstr("unless you add --high-pass 40.\n"));
    EXPECT_THAT(run({"--no-report", "--force", "--high-pass", "40"}).out, Not(HasSubstr("unless you add")));
    record["Input"]["DummyScans"] = "two";
    writeFile(copy / "a_desc-ICA_decomposition.json", record.dump());
    EXPECT_EQ(run({"--force"}).status, 3);
}

TEST_F(Denoise, SaysThatTheDriftOfKeptCoursesStaysWithNonaggrAlone) {
    const char* note =
        " % of a kept course, and nonaggr keeps that part in the image; use --method orthaggr or aggr to "
        "remove it, or analyse with the same --high-pass.";
    EXPECT_THAT(denoise({"--reject", "2", "--high-pass", "30"}).out, HasSubstr(note));
    EXPECT_THAT(denoise({"--reject", "2", "--high-pass", "30", "--method", "aggr", "--force"}).out,
                Not(HasSubstr("of a kept course")));
}

TEST_F(Denoise, LeavesLabelsAndResultAsTheyAre) {
    const std::string file = labels("ICA_00\tnoise\trim\n");
    const auto before = namesIn(result());
    ASSERT_EQ(denoise({"--labels", file}).status, 0);
    EXPECT_EQ(textOf(file), "component\tclassification\tnote\nICA_00\tnoise\trim\n");
    EXPECT_EQ(namesIn(result()), before);
}

TEST_F(Denoise, ReplacesAnEarlierImageOnlyWithForce) {
    ASSERT_EQ(denoise({"--reject", "1"}).status, 0);
    expectRefusal(1, "exists and is not empty; name another folder, or use --force to replace a result.",
                  {"--reject", "1"});
    ASSERT_EQ(denoise({"--reject", "1", "--method", "aggr", "--force"}).status, 0);
    const CommandResult run = znica({"run", bold(), "--components", "1", "--out", out(), "--force"});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("out holds a denoised image; --force replaces only results of znica run.\n"));
    EXPECT_FALSE(std::filesystem::exists(folder / "out/a_desc-nonaggrDenoised_bold.nii.gz"));
    writeFile(folder / "out/mine.txt", "");
    expectRefusal(1, "holds mine.txt, which does not belong to a result", {"--reject", "1", "--force"});
}

TEST_F(Denoise, NamesWhatAnotherMachineLeftOfTheSameImage) {
    const std::filesystem::path left = folder / ".out.unfinished-00000000-17-0";
    std::filesystem::create_directory(left);
    std::filesystem::last_write_time(left, std::filesystem::file_time_type::clock::now() - std::chrono::hours(48));
    EXPECT_EQ(denoise({"--reject", "2", "--quiet"}).err, "");
    const CommandResult done = denoise({"--reject", "2", "--force"});
    EXPECT_EQ(done.status, 0);
    EXPECT_THAT(done.err, HasSubstr("holds .out.unfinished-00000000-17-0, which another machine or container began"));
    EXPECT_TRUE(std::filesystem::exists(left));
}

TEST_F(Denoise, NeverReplacesItsInputs) {
    const auto before = namesIn(result());
    const CommandResult refused = znica({"denoise", result(), bold(), "--reject", "1", "--out", result(), "--force"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("which --force would replace; name another folder with --out."));
    EXPECT_EQ(namesIn(result()), before);
}

TEST_F(Denoise, RefusesWhatDoesNotExist) {
    expectRefusal(3, "--reject names 5, but the result has ICA_00 to ICA_03, that is IC 1 to IC 4.", {"--reject", "5"});
    expectRefusal(3, "holds the label \"bad\"", {"--labels", labels("ICA_00\tbad\t\n")});
    expectRefusal(3, "names ICA_09", {"--labels", labels("ICA_09\tnoise\t\n")});
    expectRefusal(3, "none.tsv", {"--labels", (folder / "none.tsv").string()});
    expectRefusal(3, "none.nii", {"--reject", "1"}, (folder / "none.nii").string());
    const CommandResult refused = znica({"denoise", folder.path().string(), bold(), "--reject", "1", "--out", out()});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("name a folder created by znica run."));
}

TEST_F(Denoise, RefusesToRejectAllUnlessAggressively) {
    expectRefusal(3, "all 4 components are rejected, so nonaggr has none to protect", {"--reject", "1,2,3,4"});
    EXPECT_EQ(denoise({"--reject", "1,2,3,4", "--method", "aggr"}).status, 0);
}

TEST_F(Denoise, RefusesImagesThatDoNotMatchTheResult) {
    expectRefusal(3, "has 20 volumes, but the result is of 22 after 2 dummy scans", {"--reject", "1"},
                  file("short.nii", plainSeries(20).bytes()));
    NiftiBytes moved = plainSeries(kVolumes);
    moved.sform[0][3] += 5.0f;
    expectRefusal(3, "resample the functional image to that grid", {"--reject", "1"}, file("moved.nii", moved.bytes()));
    const std::string whole = plainSeries(kVolumes).bytes();
    expectRefusal(3, "cut.nii", {"--reject", "1"}, file("cut.nii", whole.substr(0, whole.size() / 2)));
}

// Noise on 6x5x4 voxels as a NIfTI-2 file, which may have more volumes than NIfTI-1 can count.
std::string longSeries(std::int64_t volumes) {
    std::string file(544 + 120 * static_cast<std::size_t>(volumes), '\0');
    const auto put = [&](std::size_t offset, auto value) { std::memcpy(file.data() + offset, &value, sizeof value); };
    put(0, std::int32_t{540});
    file.replace(4, 8, std::string("n+2\0\r\n\032\n", 8));
    put(12, std::int16_t{2}); // uint8
    put(14, std::int16_t{8});
    const std::array<std::int64_t, 8> dim = {4, 6, 5, 4, volumes, 1, 1, 1};
    for (std::size_t i = 0; i < 8; ++i) put(16 + 8 * i, dim[i]);
    for (std::size_t i = 0; i < 8; ++i) put(104 + 8 * i, i == 4 ? 2.0 : 1.0);
    put(168, std::int64_t{544});
    put(348, std::int32_t{1});                                               // the sform is that of a scanner
    for (std::size_t row = 0; row < 3; ++row) put(400 + 8 * (5 * row), 1.0); // voxels of 1 mm
    put(500, std::int32_t{2 | 8});                                           // millimetres and seconds
    std::uint32_t state = 1;
    for (std::size_t i = 544; i < file.size(); ++i) {
        file[i] = static_cast<char>(64 + ((state = state * 1664525U + 1013904223U) >> 26));
    }
    return file;
}

TEST_F(Denoise, RefusesMoreVolumesThanItCanWriteBeforeTheWork) {
    const std::string image = file("long.nii", longSeries(32768));
    const std::string analysis = (folder / "analysis").string();
    const CommandResult analysed = znica({"run", image, "--components", "4", "--seed", "1", "--dummy-scans", "32748",
                                          "--mask", "none", "--no-report", "--epsilon", "0.5", "--out", analysis});
    ASSERT_EQ(analysed.status, 0) << analysed.err;
    const CommandResult refused = znica({"denoise", analysis, image, "--reject", "1", "--out", out()});
    EXPECT_EQ(refused.status, 3) << refused.err;
    EXPECT_EQ(refused.err, "znica: " + image +
                               " has 32768 volumes, but a denoised image can hold at most 32767; split it before the "
                               "analysis.\n");
}

TEST_F(Denoise, RefusesADamagedTableOfCourses) {
    const std::filesystem::path copy = folder / "copy";
    std::filesystem::copy(result(), copy);
    const std::string table = textOf(copy / "a_desc-ICA_timeseries.tsv");
    writeFile(copy / "a_desc-ICA_timeseries.tsv", table.substr(0, table.rfind('\n', table.size() - 2) + 1));
    const CommandResult refused = znica({"denoise", copy.string(), bold(), "--reject", "1", "--out", out()});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("is damaged: it has 21 rows for 22 volumes; create the result again."));
}

TEST_F(Denoise, RefusesConfoundsWithoutValues) {
    std::string table = "a\tb\n";
    for (int t = 0; t < kVolumes; ++t) {
        table += std::to_string(t * t % 7) + "\t" + (t == 3 ? "n/a" : std::to_string(t % 5)) + "\n";
    }
    const std::string confounds = file("confounds.tsv", table);
    expectRefusal(3, "has n/a in the column \"b\" (analysed volume 2), which cannot be regressed out",
                  {"--reject", "1", "--confounds", confounds});
    expectRefusal(3, "has no column \"c\"", {"--reject", "1", "--confounds", confounds, "--columns", "c"});
    const CommandResult done = denoise({"--reject", "1", "--confounds", confounds, "--columns", "a"});
    EXPECT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("Confounds: 1 column of "));
}

TEST_F(Denoise, RefusesToRemoveEverything) {
    expectRefusal(3, "leave nothing of 22 volumes", {"--reject", "1", "--high-pass", "4"});
    expectRefusal(3, "--high-pass 3 s is below two repetition times of 2 s", {"--reject", "1", "--high-pass", "3"});
}

TEST_F(Denoise, CopiesVoxelsWithNonFiniteValues) {
    NiftiBytes image = plainSeries(kVolumes);
    image.dataType = 16;
    image.bitsPerVoxel = 32;
    std::string shorts;
    std::swap(shorts, image.data);
    for (std::size_t i = 0; i < shorts.size(); i += 2) {
        std::int16_t value = 0;
        std::memcpy(&value, shorts.data() + i, 2);
        const bool spoiled = i / 2 == 5 * 120 + 7; // voxel 7 in volume 5
        image.append(spoiled ? std::nanf("") : static_cast<float>(value));
    }
    const CommandResult done = denoise({"--reject", "1"}, file("a_bold.nii", image.bytes()));
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("Voxels: 1 with non-finite values copied unchanged.\n"));
    const auto before = reinterpret_cast<const float*>(image.data.data());
    const auto after = ReadNifti(folder / "out/a_desc-nonaggrDenoised_bold.nii.gz").values<float>();
    EXPECT_EQ(after[10 * 120 + 7], before[10 * 120 + 7]);
    EXPECT_NE(after[10 * 120 + 8], before[10 * 120 + 8]);
    EXPECT_TRUE(std::isnan(after[5 * 120 + 7]));
}

TEST_F(Denoise, NeedsLabelsOrAList) {
    expectRefusal(2, "--labels TSV or --reject LIST is required", {});
    expectRefusal(2, "--method: needs nonaggr, aggr or orthaggr; got soft", {"--reject", "1", "--method", "soft"});
    expectRefusal(2, "--reject: needs names separated by commas, such as 3,7-9 or ICA_02,ICA_06; got 1,,2",
                  {"--reject", "1,,2"});
    expectRefusal(2, "--columns", {"--reject", "1", "--columns", "a"});
}

} // namespace
} // namespace zn::test
