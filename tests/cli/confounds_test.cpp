// Time courses compared with nuisance signals.
#include "cli/command.h"
#include "cli/nifti_bytes.h"
#include "files.h"

#include <cmath>
#include <iterator>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class ConfoundsOfARun : public testing::Test {
protected:
    ConfoundsOfARun() { writeFile(folder / "a_bold.nii", plainSeries(24).bytes()); }
    std::string result(const std::string& ending) const { return (folder / "out/a_desc-ICA_").string() + ending; }
    CommandResult run(const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {
            "run",   (folder / "a_bold.nii").string(), "--components", "3",      "--seed", "1",
            "--out", (folder / "out").string(),        "--no-report",  "--force"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return znica(arguments);
    }
    // The time courses of a run as confounds x, y and z, x without its first value, and a constant one.
    std::string confoundsFromCourses() const {
        const auto courses = tableIn(result("mixing.tsv"));
        std::string text = "x\tflat\ty\tz\n";
        for (std::size_t t = 1; t < courses.size(); ++t) {
            text += (t == 1 ? "n/a" : courses[t][0]) + "\t0\t" + courses[t][1] + "\t" + courses[t][2] + "\n";
        }
        return text;
    }
    std::size_t column(const std::string& name) const {
        const auto header = tableIn(result("metrics.tsv"))[0];
        return static_cast<std::size_t>(std::find(header.begin(), header.end(), name) - header.begin());
    }

    TemporaryFolder folder;
};

TEST_F(ConfoundsOfARun, TheMostSimilarOneOfEachComponentIsNamed) {
    ASSERT_EQ(run({}).status, 0);
    const std::string confounds = (folder / "confounds.tsv").string();
    writeFile(confounds, confoundsFromCourses());
    const CommandResult done = run({"--confounds", confounds});
    ASSERT_EQ(done.status, 0) << done.err;
    EXPECT_THAT(done.out,
                HasSubstr("Confounds: 3 columns of " + confounds + "; 1 other constant or without values.\n"));

    const auto table = tableIn(result("metrics.tsv"));
    EXPECT_EQ(column("confound_max_corr"), column("map_kurtosis") + 1);
    const json facts = json::parse(textOf(result("decomposition.json")));
    const json description = json::parse(textOf(result("metrics.json")));
    EXPECT_EQ(facts["Settings"]["Confounds"], confounds);
    EXPECT_EQ(facts["Confounds"], (json{"x", "y", "z"}));
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(table[i + 1][column("confound_name")], std::string(1, "xyz"[i]));
        EXPECT_NEAR(std::stod(table[i + 1][column("confound_max_corr")]), 1.0, 1e-6);
        EXPECT_NEAR(facts["Components"][i]["Confound"]["Correlation"].get<double>(), 1.0, 1e-6);
        EXPECT_TRUE(description.contains(table[0][column("confound_name")]));
    }
}

TEST_F(ConfoundsOfARun, AreTheColumnsAskedForWithoutTheRowsOfDummyScans) {
    ASSERT_EQ(run({"--dummy-scans", "4"}).status, 0);
    std::string text = "other\ty\n7\t1\n1\t0\n2\t0\n3\t1\n";
    const auto courses = tableIn(result("mixing.tsv"));
    for (std::size_t t = 1; t < courses.size(); ++t) text += std::to_string(t % 5) + "\t" + courses[t][1] + "\n";
    const std::string confounds = (folder / "confounds.tsv").string();
    writeFile(confounds, text);
    ASSERT_EQ(run({"--confounds", confounds, "--columns", "y", "--dummy-scans", "4"}).status, 0);
    const auto table = tableIn(result("metrics.tsv"));
    EXPECT_NEAR(std::stod(table[2][column("confound_max_corr")]), 1.0, 1e-6);
    for (std::size_t row = 1; row <= 3; ++row) EXPECT_EQ(table[row][column("confound_name")], "y");
}

TEST_F(ConfoundsOfARun, ThatCannotBeUsedAreRefused) {
    const std::string confounds = (folder / "confounds.tsv").string();
    EXPECT_THAT(run({"--confounds", confounds}).err, HasSubstr("confounds.tsv does not exist"));
    writeFile(confounds, "x\ty\n1\t2\n");
    const CommandResult refused = run({"--confounds", confounds});
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("has 1 rows of confounds, but the data have 24 volumes"));
}

} // namespace
} // namespace zn::test
