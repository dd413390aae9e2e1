// What a result says about its input: the repetition time with its frequency bands, and the components requested.
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
using testing::IsEmpty;

class RecordedInput : public testing::Test {
protected:
    json factsOf(const std::vector<std::string>& options) {
        writeFile(folder / "a_bold.nii", plainSeries(24).bytes()); // 2 s
        std::vector<std::string> arguments = {
            "run", "--as-is",    (folder / "a_bold.nii").string(), "--out", (folder / "out").string(), "--seed",
            "1",   "--no-report"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        result = znica(arguments);
        EXPECT_THAT(result.err, IsEmpty());
        return json::parse(textOf(folder / "out/a_desc-ICA_decomposition.json"));
    }
    json notesAt(const std::string& seconds) {
        return factsOf({"--components", "1", "--tr", seconds, "--force"})["Input"]["Notes"];
    }
    json columns() { return json::parse(textOf(folder / "out/a_desc-ICA_metrics.json")); }

    TemporaryFolder folder;
    CommandResult result;
};

TEST_F(RecordedInput, TheRequestAndTheResultingNumberOfComponentsAreRecorded) {
    const json count = factsOf({"--components", "2"})["Settings"];
    EXPECT_EQ(count["ComponentsAsked"], 2);
    const json range = factsOf({"--eigenvalues", "2:4", "--force"})["Settings"];
    EXPECT_EQ(range["ComponentsAsked"], 3);
    const json estimated = factsOf({"--components", "auto", "--force"})["Settings"];
    EXPECT_EQ(estimated["ComponentsAsked"], "auto");
    EXPECT_GE(estimated["Components"], 1);
}

TEST_F(RecordedInput, TheMaximumIsRecordedAsRequested) {
    const json most = factsOf({"--components", "max", "--epsilon", "0.9"})["Settings"]; // converges at once
    EXPECT_EQ(most["ComponentsAsked"], "max");
    EXPECT_EQ(most["Components"], 24);
}

TEST_F(RecordedInput, ATimeOfOneSecondWithoutAUnitIsDoubted) {
    NiftiBytes image = plainSeries(24);
    image.pixdim[4] = 1.0f;
    image.units = 2;
    const std::string file = (folder / "a_bold.nii").string();
    writeFile(file, image.bytes());
    const auto notesOf = [&](const std::string& out, const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"run",    "--as-is", file,    "--components",          "1",
                                              "--seed", "1",       "--out", (folder / out).string(), "--no-report"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        result = znica(arguments);
        return json::parse(textOf(folder / out / "a_desc-ICA_decomposition.json"))["Input"]["Notes"];
    };
    const std::string text = "TR: the header says 1 s without a unit, which many programs write by default; check it, "
                             "or give --tr.";
    EXPECT_THAT(notesOf("doubted", {}), ElementsAre(json{{"Code", "repetition-time-without-unit"}, {"Text", text}}));
    EXPECT_THAT(result.out, HasSubstr(text + "\n"));
    EXPECT_THAT(notesOf("given", {"--tr", "1"}), IsEmpty());
    writeFile(folder / "a_bold.json", R"({"RepetitionTime": 1.0})");
    EXPECT_THAT(notesOf("sidecar", {}), IsEmpty());
}

TEST_F(RecordedInput, ATimeThatSuitsThePluginsBandsNeedsNoNote) {
    const json notes = factsOf({"--components", "1"})["Input"]["Notes"];
    EXPECT_TRUE(notes.is_array());
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(RecordedInput, DisagreeingTimesAreNoted) {
    writeFile(folder / "a_bold.json", R"({"RepetitionTime": 3})");
    EXPECT_THAT(factsOf({"--components", "1"})["Input"]["Notes"],
                ElementsAre(json{{"Code", "repetition-time-disagreement"},
                                 {"Text", "TR: a_bold.json says 3 s and is used; the header says 2 s."}}));
}

TEST_F(RecordedInput, ATimeThatDoesNotSuitThePluginsBandsIsPrintedAndRecorded) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"0.8", "TR: 0.8 s is below 1 s, which the plug-in truncates to 0: its frequency bands are meaningless here; "
                "band 1 is 1 and the others are n/a."},
        {"2.5", "TR: 2.5 s is not a whole number of seconds; the plug-in uses 2 s for its frequency bands."},
        {"6", "TR: 6 s leaves the plug-in 4 of its 5 frequency bands; the others are n/a."},
        {"11", "TR: 11 s leaves the plug-in 3 of its 5 frequency bands; the others are n/a."}};
    for (const auto& [seconds, note] : cases) {
        const json notes = notesAt(seconds);
        EXPECT_THAT(notes, testing::Contains(json{{"Code", "frequency-bands"}, {"Text", note}}));
        EXPECT_THAT(result.out, HasSubstr(note + "\n"));
        EXPECT_THAT(textOf(folder / "out/log.txt"), HasSubstr(note + "\n"));
    }
}

// The number of bands and their limits are checked against the plug-in in the unit tests of the bands.
TEST_F(RecordedInput, TheDescriptionOfABandGivesTheLimitsOfThisRun) {
    const auto band = [this](int number) {
        return columns()["power_band_" + std::to_string(number)]["Description"].get<std::string>();
    };
    notesAt("2");
    EXPECT_THAT(band(4),
                HasSubstr("power from 0.2 to 0.4 of the Nyquist frequency, divided by the component's largest"));
    EXPECT_THAT(band(5), HasSubstr("power from 0.4 of the Nyquist frequency upwards,"));
    notesAt("6");
    EXPECT_THAT(band(4), HasSubstr("power from 0.2 of the Nyquist frequency upwards,"));
    EXPECT_THAT(band(5), HasSubstr("Not in use"));
    notesAt("0.8");
    EXPECT_THAT(band(1), HasSubstr("1 for every component"));
    EXPECT_THAT(band(5), HasSubstr("n/a for every component"));
    const auto table = tableIn(folder / "out/a_desc-ICA_metrics.tsv");
    EXPECT_THAT(std::vector(table[1].begin() + 12, table[1].begin() + 17),
                ElementsAre("1", "n/a", "n/a", "n/a", "n/a"));
}

} // namespace
} // namespace zn::test
