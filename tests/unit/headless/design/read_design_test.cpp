// Each format in a file written by hand as the documentation of its program describes it.
#include "headless/design/read_design.h"

#include "files.h"
#include "headless/events/event_predictor.h"
#include "headless/failure/failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

constexpr AnalysedVolumes kFour = {4, 0, 2.0};

class ReadDesign : public testing::Test {
protected:
    Design read(const std::string& name, const std::string& text, const AnalysedVolumes& volumes = kFour) {
        writeFile(folder / name, text);
        return readDesign(folder / name, volumes);
    }
    std::string refusalOf(const std::string& text, const AnalysedVolumes& volumes = kFour) {
        try {
            read("design", text, volumes);
            return "accepted";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return std::string(failure.what()).substr((folder / "design").string().size());
        }
    }
    TemporaryFolder folder;
};

TEST_F(ReadDesign, TablesSeparatedByTabsOrCommas) {
    for (const char* text :
         {"face\thouse\n0\t1\n0.5\t-1e-3\n1\t0\n0\t0\n\n", "\"face\",house\r\n0,1\r\n0.5,-1e-3\r\n1,0\r\n0,0\r\n"}) {
        const Design design = read("blocks.txt", text);
        EXPECT_EQ(design.format, "table");
        EXPECT_THAT(design.matrix.names, ElementsAre("face", "house"));
        EXPECT_THAT(design.matrix.predictors,
                    ElementsAre(ElementsAre(0.0f, 0.5f, 1.0f, 0.0f), ElementsAre(1.0f, -1e-3f, 0.0f, 0.0f)));
    }
}

TEST_F(ReadDesign, FeatsDesignMatrix) {
    const Design design = read("design.mat", "/NumWaves\t2\n/NumPoints\t4\n/PPheights\t\t1.000000e+00\t1.050000e+00\n\n"
                                             "/Matrix\n0.000000e+00\t1.000000e+00\t\n-5.000000e-01\t0.000000e+00\t\n"
                                             "1.000000e+00\t0.000000e+00\t\n0.000000e+00\t5.000000e-02\t\n");
    EXPECT_EQ(design.format, "FEAT design matrix");
    EXPECT_THAT(design.matrix.names, ElementsAre("EV1", "EV2"));
    EXPECT_THAT(design.matrix.predictors,
                ElementsAre(ElementsAre(0.0f, -0.5f, 1.0f, 0.0f), ElementsAre(1.0f, 0.0f, 0.0f, 0.05f)));
}

TEST_F(ReadDesign, AfnisColumnsWithoutNames) {
    const Design design =
        read("task.1D", "# ideal response\n2@0 1\n\n0.5,1 1 // a remark\n  2e-1\t3 0\n1 1 1 # last\n");
    EXPECT_EQ(design.format, "number columns");
    EXPECT_THAT(design.matrix.names, ElementsAre("task[0]", "task[1]", "task[2]"));
    EXPECT_THAT(design.matrix.predictors,
                ElementsAre(ElementsAre(0.0f, 0.5f, 0.2f, 1.0f), ElementsAre(0.0f, 1.0f, 3.0f, 1.0f),
                            ElementsAre(1.0f, 1.0f, 0.0f, 1.0f)));
    EXPECT_THAT(read("ideal.1D", "1\n2\n3\n4\n").matrix.names, ElementsAre("ideal"));
}

TEST_F(ReadDesign, AfnisMatrixWithLabels) {
    const Design design = read("X.xmat.1D", "# <matrix\n#  ni_type = \"2*double\"\n#  ni_dimen = \"4\"\n"
                                            "#  ColumnLabels = \"Run#1Pol#0 ; Face#0\"\n# >\n"
                                            " 1 0\n 1 0.25\n 1 1\n 1 0.5\n# </matrix>\n");
    EXPECT_THAT(design.matrix.names, ElementsAre("Run#1Pol#0", "Face#0"));
    EXPECT_THAT(design.matrix.predictors[1], ElementsAre(0.0f, 0.25f, 1.0f, 0.5f));
}

TEST_F(ReadDesign, RtcText) {
    const Design design = read("d.txt", "FileVersion:     2\nType:            DesignMatrix\nNrOfPredictors:  1\n"
                                        "NrOfDataPoints:  4\n\n\"TC 1\"\n 0 \n 0.5 \n 1 \n 0\n");
    EXPECT_EQ(design.format, "RTC text");
    EXPECT_THAT(design.matrix.names, ElementsAre("TC 1"));
}

TEST_F(ReadDesign, EventsBecomeOnePredictorPerTrialType) {
    const AnalysedVolumes volumes = {30, 4, 2.0};
    const Design design = read("sub-01_events.tsv",
                               "onset\tduration\ttrial_type\n12\t16\thouse\n30.5\tn/a\tface\n900\t1\tlate\n", volumes);
    EXPECT_EQ(design.format, "BIDS events");
    EXPECT_THAT(design.matrix.names, ElementsAre("face", "house", "late"));
    EXPECT_THAT(design.matrix.predictors,
                ElementsAre(predictorOf({{30.5, 0.0}}, volumes), predictorOf({{12.0, 16.0}}, volumes),
                            std::vector<float>(26, 0.0f)));
    EXPECT_THAT(design.notes, ElementsAre("Design: no event of late affects the analysed volumes."));
}

TEST_F(ReadDesign, RowsOfDummyScansAreOmittedFromADesignOfAllVolumes) {
    const Design all = read("all.csv", "a\n9\n8\n1\n2\n3\n4\n", {6, 2, 2.0});
    EXPECT_THAT(all.matrix.predictors, ElementsAre(ElementsAre(1.0f, 2.0f, 3.0f, 4.0f)));
    EXPECT_EQ(all.omittedRows, 2);
    const Design analysed = read("analysed.csv", "a\n1\n2\n3\n4\n", {6, 2, 2.0});
    EXPECT_THAT(analysed.matrix.predictors, ElementsAre(ElementsAre(1.0f, 2.0f, 3.0f, 4.0f)));
    EXPECT_EQ(analysed.omittedRows, 0);
    EXPECT_EQ(
        refusalOf("a\n1\n2\n3\n4\n5\n", {6, 2, 2.0}),
        " has 5 rows of predictor values, but the data have 6 volumes (4 without the dummy scans); provide one row "
        "per volume, or the events with their times as a BIDS events file.");
}

TEST_F(ReadDesign, AFileOfAnotherKindIsToldWhatADesignCanBe) {
    const std::string formats =
        "; a design is a BIDS events file, a table (TSV, CSV) with a header, FEAT's design.mat, "
        "AFNI's .1D or RTC text.";
    for (const auto& [text, complaint] : std::vector<std::pair<std::string, std::string>>{
             {"Dear reader,\nthis is a letter.\n", ", line 2, has 1 cells, but the header has 2"},
             {"A single line.", " has nothing below its first line"},
             {"face\nfour\n", ", line 2, column \"face\", holds \"four\" where a number is expected"},
             {"face\nnan\n", ", line 2, column \"face\", holds \"nan\" where a number is expected"},
             {"0.5 1\n1 2 3\n", ", line 2, has 3 numbers, but the rows before it have 2"},
             {"0.5 1\n1 two\n", ", line 2, holds \"two\" where a number is expected"},
             {"2@0 1\n0@1 2 3\n", ", line 2, holds \"0@1\" where a number is expected"},
             {"onset\tduration\n1\t-1\n", "holds a negative duration, -1 s"},
             {"/NumWaves 2\n/Matrix\n1 2\n", " lacks a count above 0 after \"/NumWaves\" or \"/NumPoints\""},
             {"/NumWaves 2\n/NumPoints 4\n", " lacks the line \"/Matrix\""},
             {"/NumWaves 2\n/NumPoints 1\n/Matrix\n1\n", ", line 4, has 1 numbers, but /NumWaves is 2"},
             {"/NumWaves 2\n/NumPoints 4\n/Matrix\n1 2\n", " has 1 rows of numbers, but /NumPoints is 4"},
             {"/NumWaves 1000000000000000000\n/NumPoints 4\n/Matrix\n", " has 0 rows of numbers, but /NumPoints is 4"},
             {"1\ta\n2\t3\n", " has the number 1 in its first line, which must name the predictors"},
             {"FileVersion: 2\n\n\"A\"\n1\n", " lacks the line \"NrOfPredictors:\""}}) {
        const std::string refusal = refusalOf(text);
        EXPECT_THAT(refusal, HasSubstr(complaint)) << text;
        EXPECT_THAT(refusal, EndsWith(formats)) << text;
    }
}

TEST_F(ReadDesign, ConstantPredictorsAreNoted) {
    EXPECT_THAT(read("a.tsv", "face\tmean\n0\t1\n1\t1\n0\t1\n1\t1\n").notes,
                ElementsAre("Design: mean is constant over the analysed volumes, so it correlates with nothing."));
    // Only among the dummy scans does it change.
    EXPECT_THAT(read("b.tsv", "face\n0\n1\n1\n1\n1\n1\n", {6, 2, 2.0}).notes,
                ElementsAre("Design: face is constant over the analysed volumes, so it correlates with nothing."));
}

TEST_F(ReadDesign, PredictorsOfTheSameNameAreNoted) {
    EXPECT_THAT(read("a.tsv", "face\tface\n0\t1\n1\t0\n0\t1\n1\t1\n").notes,
                ElementsAre("Design: two predictors are named face, which the results do not distinguish."));
}

TEST_F(ReadDesign, MorePredictorsThanThePluginComparesAreRefused) {
    std::string events = "onset\tduration\ttrial_type\n";
    for (int i = 0; i < 17; ++i) events += "1\t1\ttype" + std::to_string(i) + "\n";
    EXPECT_EQ(refusalOf(events),
              " has 17 trial types; the plug-in accepts at most 16 predictors; name fewer of them in "
              "trial_type.");
    EXPECT_THAT(refusalOf("17@1\n17@2\n17@3\n17@4\n"), HasSubstr(" has 17 predictors; the plug-in accepts at most 16"));
}

} // namespace
} // namespace zn::test
