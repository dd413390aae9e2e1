// `znica bids` killed at every renaming of a file: the next run repairs the study and repeats only what is missing.
#include "attack/faults/disturbed_command.h"
#include "files.h"

#include <filesystem>
#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

class StudyKills : public testing::Test {
protected:
    void SetUp() override {
        for (const std::string subject : {"sub-01", "sub-02"}) {
            const fs::path sample = folder / ("sample-" + subject);
            const Stage stage{folder.path(), {}};
            ASSERT_EQ(runDisturbed({"simulate", "--size", "tiny", "--out", sample}, stage, {}).status, 0);
            fs::create_directories(folder / "data" / subject / "func");
            fs::rename(sample / "sub-sim_task-blocks_bold.nii.gz",
                       folder / "data" / subject / "func" / (subject + "_task-rest_bold.nii.gz"));
        }
    }
    Ending analyse(const fs::path& out, const Fault& fault, std::vector<std::string> more = {}) const {
        more.insert(more.begin(), {"bids", folder / "data", out, "participant", "--components", "2", "--seed", "1",
                                   "--no-report", "--nprocs", "1"});
        return runDisturbed(more, {folder.path(), {out}}, fault);
    }
    // The results proper: the same bytes in every run.
    std::map<std::string, std::string> contents(const fs::path& out) const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(out)) {
            const std::string name = entry.path().lexically_relative(out).string();
            const bool timed = name.starts_with("logs/") || name.ends_with("decomposition.json");
            if (entry.is_regular_file()) found[name] = timed ? "" : textOf(entry.path());
        }
        return found;
    }

    const TemporaryFolder folder;
};

TEST_F(StudyKills, AreRepairedByTheNextRunWhichRepeatsOnlyWhatIsMissing) {
    const fs::path undisturbed = folder / "undisturbed";
    ASSERT_EQ(analyse(undisturbed, {}).status, 0);
    const auto expected = contents(undisturbed);

    const fs::path begun = folder / "begun";
    ASSERT_EQ(analyse(begun, {}, {"--only", "sub-01_task-rest"}).status, 0);
    const fs::path out = folder / "out";
    const fs::path done = out / "logs/sub-01_task-rest.json";

    std::uint64_t kills = 0;
    for (std::uint64_t at = 1;; ++at) {
        fs::remove_all(out);
        fs::copy(begun, out, fs::copy_options::recursive);
        const auto before = fs::last_write_time(done);
        if (analyse(out, {Call::kRename, at, "kill"}).injected == 0) break;
        ++kills;
        const Ending repaired = analyse(out, {});
        EXPECT_EQ(repaired.status, 0) << at << repaired.err;
        EXPECT_THAT(repaired.out, HasSubstr("2 of 2 runs done")) << at;
        EXPECT_EQ(fs::last_write_time(done), before) << at;
        EXPECT_EQ(contents(out), expected) << at;
    }
    EXPECT_GE(kills, 14U); // the result's files, the record, the dataset's description
}

// While the earlier result is replaced, the record is that of all files that are there, or there is none.
TEST_F(StudyKills, OfARepetitionLeaveNoRecordOfAnotherResult) {
    const std::vector<std::string> first = {"--only", "sub-01_task-rest"};
    const std::vector<std::string> second = {"--only", "sub-01_task-rest", "--smooth", "6"};
    const fs::path begun = folder / "begun";
    ASSERT_EQ(analyse(begun, {}, first).status, 0);
    const fs::path undisturbed = folder / "undisturbed";
    fs::copy(begun, undisturbed, fs::copy_options::recursive);
    ASSERT_EQ(analyse(undisturbed, {}, second).status, 0);
    const auto earlier = contents(begun);
    const auto later = contents(undisturbed);
    ASSERT_NE(earlier, later);

    const fs::path out = folder / "out";
    const fs::path record = out / "logs/sub-01_task-rest.json";
    const std::string before = textOf(begun / "logs/sub-01_task-rest.json");
    for (const Call call : {Call::kRename, Call::kRemove}) {
        for (std::uint64_t at = 1;; ++at) {
            fs::remove_all(out);
            fs::copy(begun, out, fs::copy_options::recursive);
            if (analyse(out, {call, at, "kill"}, second).injected == 0) break;
            auto found = contents(out);
            std::erase_if(found, [](const auto& file) {
                return file.first.find("unfinished") != std::string::npos || file.first.starts_with("logs/failed/");
            });
            if (fs::exists(record)) {
                EXPECT_EQ(found, textOf(record) == before ? earlier : later) << at;
            }
            const Ending repaired = analyse(out, {}, second);
            EXPECT_EQ(repaired.status, 0) << at << repaired.err;
            found = contents(out);
            EXPECT_EQ(found, later) << at;
        }
    }
}

// The results of the analysis stay through all of it.
TEST_F(StudyKills, DuringDenoisingAreCompletedByTheNextRun) {
    const fs::path labels = folder / "labels";
    fs::create_directory(labels);
    writeFile(labels / "sub-02_task-rest_desc-ICA_labels.tsv", "component\tclassification\tnote\nICA_00\tnoise\t\n");
    const std::vector<std::string> denoised = {"--labels-dir", labels, "--denoise", "nonaggr"};
    const fs::path begun = folder / "begun";
    ASSERT_EQ(analyse(begun, {}).status, 0);
    const fs::path undisturbed = folder / "undisturbed";
    fs::copy(begun, undisturbed, fs::copy_options::recursive);
    ASSERT_EQ(analyse(undisturbed, {}, denoised).status, 0);
    auto expected = contents(undisturbed);
    // It names the folder of the study, whose name differs.
    const std::string sidecar = "sub-02/func/sub-02_task-rest_desc-nonaggrDenoised_bold.json";
    ASSERT_EQ(expected.count(sidecar), 1U);
    expected[sidecar] = "";

    const fs::path out = folder / "out";
    std::uint64_t kills = 0;
    for (std::uint64_t at = 1;; ++at) {
        fs::remove_all(out);
        fs::copy(begun, out, fs::copy_options::recursive);
        const auto before = fs::last_write_time(out / "logs/sub-02_task-rest.json");
        if (analyse(out, {Call::kRename, at, "kill"}, denoised).injected == 0) break;
        ++kills;
        const Ending repaired = analyse(out, {}, denoised);
        EXPECT_EQ(repaired.status, 0) << at << repaired.err;
        EXPECT_THAT(repaired.out, HasSubstr("1 of 2 denoised, 1 without labels")) << at;
        EXPECT_EQ(fs::last_write_time(out / "logs/sub-02_task-rest.json"), before) << at;
        auto found = contents(out);
        found[sidecar] = "";
        EXPECT_EQ(found, expected) << at;
    }
    EXPECT_GE(kills, 20U); // the image and its evidence, the record, the dataset's description
}

} // namespace
} // namespace zn::test
