// Designs that follow the image's own times: BIDS events, the file beside the image, dummy scans.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kEvents[] = "onset\tduration\ttrial_type\n4\t10\ttask\n30\tn/a\tcue\n";

class Events : public testing::Test {
protected:
    Events() { writeFile(image(), plainSeries(24).bytes()); } // 2 s
    std::filesystem::path image() const { return folder / "sub-01_task-a_space-MNI_desc-preproc_bold.nii"; }
    std::string result(const std::string& ending) const {
        return (folder / "out/sub-01_task-a_space-MNI_desc-ICA_").string() + ending;
    }
    CommandResult run(const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {"run",   image().string(),          "--components", "1",
                                              "--out", (folder / "out").string(), "--no-report",  "--force"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    }
    json settings() const { return json::parse(textOf(result("decomposition.json")))["Settings"]; }

    TemporaryFolder folder;
};

TEST_F(Events, BesideTheImageAreTakenOnRequestAndNamed) {
    const std::string events = (folder / "sub-01_task-a_events.tsv").string();
    writeFile(events, kEvents);
    const CommandResult done = run({"--design", "auto"});
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out, HasSubstr("Design: 2 predictors from " + events + " (BIDS events).\n"));
    EXPECT_EQ(settings()["DesignMatrix"], events);
    EXPECT_EQ(settings()["DesignFormat"], "BIDS events");
    const json facts = json::parse(textOf(result("decomposition.json")));
    EXPECT_EQ(facts["Predictors"], (json{"cue", "task"}));
}

TEST_F(Events, ThatAreMissingBesideTheImageAreARefusal) {
    const CommandResult refused = run({"--design", "auto"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.err, "znica: --design auto needs " + (folder / "sub-01_task-a_events.tsv").string() +
                               ", which does not exist; name a file, or leave out --design.\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "out"));
}

TEST_F(Events, KeepTheirTimesWhenDummyScansAreOmitted) {
    writeFile(folder / "events.tsv", kEvents);
    const auto predictors = [&](const std::string& dummyScans) {
        const CommandResult done =
            znica({"run", image().string(), "--components", "1", "--out", (folder / "out").string(), "--force",
                   "--design", (folder / "events.tsv").string(), "--dummy-scans", dummyScans});
        EXPECT_EQ(done.status, 0) << done.err;
        return tableIn(result("design.tsv"));
    };
    auto all = predictors("0");
    const auto later = predictors("5");
    all.erase(all.begin() + 1, all.begin() + 6); // the rows below the names
    EXPECT_EQ(later, all);
}

TEST_F(Events, OutsideTheAnalysedVolumesAreNoted) {
    writeFile(folder / "events.tsv", "onset\tduration\ttrial_type\n4\t10\ttask\n100\t1\tlate\n");
    const CommandResult done = run({"--design", (folder / "events.tsv").string()});
    ASSERT_EQ(done.status, 0) << done.err;
    const json notes = json::parse(textOf(result("decomposition.json")))["Input"]["Notes"];
    EXPECT_EQ(notes[0]["Text"], "Design: no event of late affects the analysed volumes.");
}

TEST_F(Events, ADesignOfAllVolumesLosesTheRowsOfDummyScans) {
    std::string table = "ramp\n";
    for (int t = 0; t < 24; ++t) table += std::to_string(t) + "\n";
    writeFile(folder / "ramp.csv", table);
    const CommandResult done = run({"--design", (folder / "ramp.csv").string(), "--dummy-scans", "4"});
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_EQ(settings()["DesignRowsOmitted"], 4);
    EXPECT_EQ(settings()["DesignFormat"], "table");
}

TEST_F(Events, InTheFolderThatForceWouldReplaceAreRefused) {
    std::filesystem::create_directory(folder / "out");
    writeFile(folder / "out/kept_events.tsv", kEvents);
    std::filesystem::create_symlink(folder / "out/kept_events.tsv", folder / "sub-01_task-a_events.tsv");
    const CommandResult refused = run({"--design", "auto"});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("which --force would replace"));
    EXPECT_TRUE(std::filesystem::exists(folder / "out/kept_events.tsv"));
}

} // namespace
} // namespace zn::test
