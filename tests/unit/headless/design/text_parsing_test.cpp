// The values parsed from design matrices and tables of names; rejected input is tested through the command.
#include "headless/design/predictor_table.h"
#include "headless/design/rtc_text.h"
#include "headless/text/text_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::ElementsAre;

TEST(RtcText, NamesAndColumnsAreReadAsWritten) {
    const DesignMatrix design =
        parseRtc({"FileVersion:     2", "Type:            DesignMatrix", "NrOfPredictors:  2", "NrOfDataPoints:  3", "",
                  "\"TC1\" \"a longer name\" ", "    0     1 ", "  0.5  0.25 ", "    1 -1e-05 "},
                 "x.rtc");
    EXPECT_THAT(design.names, ElementsAre("TC1", "a longer name"));
    EXPECT_THAT(design.predictors, ElementsAre(ElementsAre(0.0f, 0.5f, 1.0f), ElementsAre(1.0f, 0.25f, -1e-5f)));
}

TEST(PredictorTable, ColumnsAreReadInOrderAndTrailingEmptyLinesAreIgnored) {
    const DesignMatrix design = predictorTable(parseTable({"face\thouse", "0\t2.5", "-1\t0", "", " "}, "x.tsv"));
    EXPECT_THAT(design.names, ElementsAre("face", "house"));
    EXPECT_THAT(design.predictors, ElementsAre(ElementsAre(0.0f, -1.0f), ElementsAre(2.5f, 0.0f)));
}

TEST(TextLines, TabsSeparateCellsAndBlanksSeparateWords) {
    EXPECT_THAT(splitAtTabs("a\t\tb c"), ElementsAre("a", "", "b c"));
    EXPECT_THAT(splitAtTabs(""), ElementsAre(""));
    EXPECT_THAT(splitAtBlanks("  a\t b  "), ElementsAre("a", "b"));
    EXPECT_TRUE(splitAtBlanks(" \t ").empty());
}

} // namespace
} // namespace zn::test
