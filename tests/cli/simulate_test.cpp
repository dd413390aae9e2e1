// The sample generator: what it writes, and that it always writes the same.
#include "cli/command.h"
#include "cli/nifti_reading.h"
#include "files.h"

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace zn::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;

class Simulate : public testing::Test {
protected:
    std::string make(const std::string& name, std::vector<std::string> options) {
        options.insert(options.begin(), {"simulate", "--out", (folder / name).string()});
        const CommandResult result = znica(options);
        EXPECT_EQ(result.status, 0) << result.err;
        return (folder / name).string() + "/sub-sim_task-blocks_";
    }

    TemporaryFolder folder;
};

TEST_F(Simulate, WritesTheMeasurementAndItsGroundTruth) {
    make("s", {"--size", "tiny", "--sources", "4"});
    EXPECT_THAT(namesIn(folder / "s"),
                ElementsAre("sub-sim_task-blocks_bold.json", "sub-sim_task-blocks_bold.nii.gz",
                            "sub-sim_task-blocks_desc-brain_mask.nii.gz",
                            "sub-sim_task-blocks_desc-sources_dseg.nii.gz", "sub-sim_task-blocks_desc-sources_dseg.tsv",
                            "sub-sim_task-blocks_desc-task_design.tsv",
                            "sub-sim_task-blocks_desc-truth_components.nii.gz",
                            "sub-sim_task-blocks_desc-truth_mixing.tsv", "truth.json"));
}

TEST_F(Simulate, TheDefaultBrainHasMoreThanTwentyThousandVoxels) {
    const std::string stem = make("s", {});
    const ReadNifti bold(stem + "bold.nii.gz");
    EXPECT_GE(bold.dim[4], 150);
    EXPECT_EQ(bold.pixdim[4], 2.0f);
    EXPECT_EQ(bold.units, 2 | 8);
    EXPECT_EQ(bold.dataType, 4);
    const auto mask = ReadNifti(stem + "desc-brain_mask.nii.gz").values<unsigned char>();
    EXPECT_GE(std::count(mask.begin(), mask.end(), 1), 20000);
    const json truth = json::parse(textOf(folder / "s/truth.json"));
    EXPECT_EQ(truth["sources"].size(), 8U);
    EXPECT_EQ(truth["voxels_inside"].get<std::int64_t>(), std::count(mask.begin(), mask.end(), 1));
}

TEST_F(Simulate, TheSameSeedGivesTheSameBytesAndAnotherSeedDoesNot) {
    const std::string a = make("a", {"--size", "tiny", "--seed", "5"});
    const std::string b = make("b", {"--size", "tiny", "--seed", "5"});
    const std::string c = make("c", {"--size", "tiny", "--seed", "6"});
    for (const auto& name : namesIn(folder / "a")) {
        EXPECT_EQ(textOf(folder / "a" / name), textOf(folder / "b" / name)) << name;
    }
    EXPECT_NE(textOf(a + "bold.nii.gz"), textOf(c + "bold.nii.gz"));
}

TEST_F(Simulate, WithoutNoiseTheMeasurementIsTheSumOfItsTruth) {
    const std::string stem = make("s", {"--size", "tiny", "--sources", "3", "--noise", "0"});
    const auto bold = ReadNifti(stem + "bold.nii.gz").values<std::int16_t>();
    const auto mask = ReadNifti(stem + "desc-brain_mask.nii.gz").values<unsigned char>();
    const auto maps = ReadNifti(stem + "desc-truth_components.nii.gz").values<float>();
    const auto courses = tableIn(stem + "desc-truth_mixing.tsv");
    const std::size_t voxels = mask.size();
    for (std::size_t v = 0; v < voxels; ++v) {
        if (mask[v] == 0) continue;
        for (const std::size_t t : {7U, 40U, 79U}) { // differences from volume 0 do not contain the baseline
            double expected = 0.0;
            for (std::size_t s = 0; s < 3; ++s) {
                expected += static_cast<double>(maps[s * voxels + v]) *
                            (std::stod(courses[t + 1][s]) - std::stod(courses[1][s]));
            }
            ASSERT_NEAR(bold[t * voxels + v] - bold[v], expected, 1.01); // both rounded to integers
        }
    }
}

TEST_F(Simulate, TimeCoursesHaveZeroMeanAndUnitDeviation) {
    const auto table = tableIn(make("s", {"--size", "tiny", "--sources", "9"}) + "desc-truth_mixing.tsv");
    EXPECT_THAT(table[0], ElementsAre("blocks", "drift", "pulse", "blocks-b", "breathing", "events", "movement",
                                      "fluctuation-1", "fluctuation-2"));
    const auto volumes = static_cast<double>(table.size() - 1);
    for (std::size_t s = 0; s < table[0].size(); ++s) {
        double sum = 0.0;
        double squares = 0.0;
        for (std::size_t t = 1; t < table.size(); ++t) {
            const double value = std::stod(table[t][s]);
            sum += value;
            squares += value * value;
        }
        EXPECT_NEAR(sum / volumes, 0.0, 1e-6) << table[0][s];
        EXPECT_NEAR(squares / volumes, 1.0, 1e-6) << table[0][s];
    }
}

TEST_F(Simulate, LabelsAreWhereTheSourcesAreStrong) {
    const std::string stem = make("s", {"--size", "tiny", "--sources", "4"});
    const auto labels = ReadNifti(stem + "desc-sources_dseg.nii.gz").values<std::int16_t>();
    const auto maps = ReadNifti(stem + "desc-truth_components.nii.gz").values<float>();
    const json truth = json::parse(textOf(folder / "s/truth.json"));
    EXPECT_THAT(tableIn(stem + "desc-sources_dseg.tsv"),
                ElementsAre(ElementsAre("index", "name"), ElementsAre("1", "blocks"), ElementsAre("2", "drift"),
                            ElementsAre("3", "pulse"), ElementsAre("4", "blocks-b")));
    for (std::size_t v = 0; v < labels.size(); ++v) {
        int strongest = 0;
        double most = 0.25; // the smallest weight in a region
        for (std::size_t s = 0; s < 4; ++s) {
            const double weight =
                static_cast<double>(maps[s * labels.size() + v]) / truth["sources"][s]["amplitude"].get<double>();
            if (weight <= most + 1e-6) continue; // single precision
            most = weight;
            strongest = static_cast<int>(s) + 1;
        }
        ASSERT_EQ(labels[v], strongest) << v;
    }
}

TEST_F(Simulate, TheDesignHasOnlyTheStimulusDrivenCourses) {
    const std::string stem = make("s", {"--size", "tiny", "--sources", "8"});
    const auto design = tableIn(stem + "desc-task_design.tsv");
    const auto courses = tableIn(stem + "desc-truth_mixing.tsv");
    EXPECT_THAT(design[0], ElementsAre("blocks", "blocks-b", "events"));
    for (std::size_t t = 1; t < design.size(); ++t) {
        EXPECT_THAT(design[t], ElementsAre(courses[t][0], courses[t][3], courses[t][5]));
    }
}

TEST_F(Simulate, SubjectsShareTheirSourcesButNotTheirCourses) {
    make("s", {"--size", "tiny", "--sources", "3", "--subjects", "2"});
    EXPECT_THAT(namesIn(folder / "s"), ElementsAre("dataset_description.json", "desc-truth_amplitudes.tsv", "sub-01",
                                                   "sub-02", "sub-sim_task-blocks_desc-brain_mask.nii.gz",
                                                   "sub-sim_task-blocks_desc-truth_components.nii.gz", "truth.json"));
    EXPECT_THAT(namesIn(folder / "s/sub-01/func"),
                ElementsAre("sub-01_task-rest_bold.json", "sub-01_task-rest_bold.nii.gz",
                            "sub-01_task-rest_desc-truth_mixing.tsv"));
    EXPECT_NE(textOf(folder / "s/sub-01/func/sub-01_task-rest_desc-truth_mixing.tsv"),
              textOf(folder / "s/sub-02/func/sub-02_task-rest_desc-truth_mixing.tsv"));
}

TEST_F(Simulate, ASubjectWithoutNoiseIsTheSumOfItsTruth) {
    const std::string stem = make("s", {"--size", "tiny", "--sources", "3", "--noise", "0", "--subjects", "2"});
    const auto bold = ReadNifti(folder / "s/sub-02/func/sub-02_task-rest_bold.nii.gz").values<std::int16_t>();
    const auto mask = ReadNifti(stem + "desc-brain_mask.nii.gz").values<unsigned char>();
    const auto maps = ReadNifti(stem + "desc-truth_components.nii.gz").values<float>();
    const auto courses = tableIn(folder / "s/sub-02/func/sub-02_task-rest_desc-truth_mixing.tsv");
    const auto strengths = tableIn(folder / "s/desc-truth_amplitudes.tsv");
    EXPECT_EQ(strengths[2][0], "sub-02");
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] == 0) continue;
        double expected = 0.0; // volume 40 minus volume 0, without the baseline
        for (std::size_t s = 0; s < 3; ++s) {
            expected += static_cast<double>(maps[s * mask.size() + v]) * std::stod(strengths[2][s + 1]) *
                        (std::stod(courses[41][s]) - std::stod(courses[1][s]));
        }
        ASSERT_NEAR(bold[40 * mask.size() + v] - bold[v], expected, 1.01); // both rounded to integers
    }
}

TEST_F(Simulate, ReplacesAnEarlierStudyButNothingElse) {
    make("s", {"--size", "tiny", "--subjects", "3"});
    make("s", {"--size", "tiny", "--subjects", "2", "--force"});
    EXPECT_FALSE(std::filesystem::exists(folder / "s/sub-03"));
    writeFile(folder / "s/sub-01/func/notes.txt", "mine");
    const CommandResult result = znica({"simulate", "--size", "tiny", "--out", (folder / "s").string(), "--force"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::HasSubstr("sub-01/, which does not belong to a result"));
}

TEST_F(Simulate, ScoringAgainstTheWrongFoldersIsRefused) {
    make("s", {"--size", "tiny", "--sources", "2"});
    const CommandResult result = znica({"score", (folder / "s").string(), "--truth", (folder / "s").string()});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.err, testing::HasSubstr("has no file that ends in _desc-ICA_components.nii.gz"));
}

TEST_F(Simulate, AComponentThatScoresForTwoSourcesIsMarked) {
    const std::string one = make("one", {"--size", "tiny", "--sources", "1"});
    make("two", {"--size", "tiny", "--sources", "2"}); // the first of which is the same
    std::filesystem::create_directory(folder / "out");
    std::filesystem::copy(one + "desc-truth_components.nii.gz", folder / "out/a_desc-ICA_components.nii.gz");
    const CommandResult result = znica({"score", (folder / "out").string(), "--truth", (folder / "two").string()});
    const json sources = json::parse(textOf(folder / "two/truth.json"))["sources"];
    const std::string first = sources[0]["name"];
    EXPECT_THAT(result.out, testing::ContainsRegex(
                                first + " +ICA_00 +1\\.0000\n" + sources[1]["name"].get<std::string>() +
                                " +ICA_00 +0\\.[0-9]+  \\(also the component of " + first + ", more similar\\)\n"));
}

TEST_F(Simulate, ScoringAgainstADamagedTruthIsRefused) {
    const std::string stem = make("s", {"--size", "tiny", "--sources", "2"});
    std::filesystem::create_directory(folder / "out");
    std::filesystem::copy(stem + "desc-truth_components.nii.gz", folder / "out/a_desc-ICA_components.nii.gz");
    const auto score = [&] { return znica({"score", (folder / "out").string(), "--truth", (folder / "s").string()}); };
    ASSERT_EQ(score().status, 0);
    for (const char* text : {"", "[]", R"({"sources": 2})", R"({"sources": [{"name": 1}, {"name": 2}]})",
                             R"({"sources": [{"name": "blocks"}]})"}) {
        writeFile(folder / "s/truth.json", text);
        const CommandResult result = score();
        EXPECT_EQ(result.status, 3) << text;
        EXPECT_THAT(result.err, testing::HasSubstr("truth.json is damaged: it does not name the 2 sources")) << text;
    }
}

} // namespace
} // namespace zn::test
