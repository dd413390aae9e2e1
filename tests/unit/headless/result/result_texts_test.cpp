#include "headless/result/metrics_table.h"
#include "headless/result/plugin_log.h"
#include "headless/result/result_names.h"
#include "headless/text/text_file.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

TEST(ResultNames, FollowTheInputsName) {
    EXPECT_EQ(resultStem("data/sub-02_task-oneback_run-1_bold.nii.gz"), "sub-02_task-oneback_run-1");
    EXPECT_EQ(resultStem("sub-1_space-MNI_desc-preproc_bold.nii.gz"), "sub-1_space-MNI");
    EXPECT_EQ(resultStem("sub-1_desc-preproc_part-mag_bold.nii"), "sub-1_part-mag");
    EXPECT_EQ(resultStem("func.nii"), "func");
    EXPECT_EQ(resultStem("bold.nii.gz"), "bold");
    EXPECT_EQ(resultStem("scan.hdr"), "scan");
    EXPECT_EQ(resultStem("run.1.v2.nii"), "run.1.v2");
    EXPECT_EQ(resultStem("SUB-01.NII.GZ"), "SUB-01");
    EXPECT_EQ(resultStem("Scan_bold.Nii"), "Scan");
}

TEST(ResultNames, ComponentsCountFromZeroWithTwoDigitsOrMore) {
    EXPECT_EQ(componentName(0), "ICA_00");
    EXPECT_EQ(componentName(10), "ICA_10");
    EXPECT_EQ(componentName(123), "ICA_123");
}

TEST(CellText, ReadsBackAsTheSameNumber) {
    for (const float value : {0.1f, 1.0f / 3.0f, -3.4e38f, 1e-42f, 16777217.0f}) {
        EXPECT_EQ(std::strtof(cellText(value).c_str(), nullptr), value);
    }
    EXPECT_EQ(cellText(0.1f), "0.1");
    EXPECT_EQ(cellText(NAN), "n/a");
    EXPECT_EQ(cellText(-INFINITY), "-inf");
}

TEST(CellText, OfANameHasNoControlCharacters) {
    EXPECT_EQ(cellText(std::string("left\thand\r\nside\x7f")), "left hand  side ");
    EXPECT_EQ(cellText(std::string("Gr\xc3\xbc\xc3\x9f"
                                   "e")),
              "Gr\xc3\xbc\xc3\x9f"
              "e"); // UTF-8 stays as it is
}

TEST(ReferenceNames, CountFromOneAndAnyOtherNumberIsNotAvailable) {
    const std::vector<std::string> names = {"face", "house"};
    EXPECT_EQ(ReferenceNames::at(names, 1.0f), "face");
    EXPECT_EQ(ReferenceNames::at(names, 2.0f), "house");
    for (const float none : {0.0f, 3.0f, -1.0f, NAN}) EXPECT_EQ(ReferenceNames::at(names, none), "n/a");
    EXPECT_EQ(ReferenceNames::at({}, 1.0f), "n/a");
}

TEST(PluginLog, CountsIterationsAndPrecedingRestarts) {
    PluginLog log;
    log.add("// Plugin>  Number of used VTC voxels: 224000");
    log.add("// Plugin>  Retained variance after dimensionality reduction: 99.978752 %");
    log.add("// Plugin>  IC #: 1  Number of Iterations: 500 (restarting) (elapsed time: 1 secs)");
    log.add("// Plugin>  IC #: 1  Number of Iterations: 500 (restarting) (elapsed time: 1 secs)");
    log.add("// Plugin>  IC #: 1  Number of Iterations: 12 (elapsed time: 3 secs) ");
    log.add("// Plugin>  IC #: 2  Number of Iterations: 7 (elapsed time: 0 secs) ");
    ASSERT_EQ(log.components().size(), 2U);
    EXPECT_EQ(log.components()[0].iterations, 12);
    EXPECT_EQ(log.components()[0].restarts, 2);
    EXPECT_EQ(log.components()[0].seconds, 3);
    EXPECT_EQ(log.components()[1].restarts, 0);
    EXPECT_EQ(log.voxels(), 224000);
    EXPECT_DOUBLE_EQ(log.retainedVariancePercent().value_or(0), 99.978752);
    EXPECT_FALSE(log.foundNone());
    EXPECT_FALSE(log.ranOutOfMemory());
}

TEST(PluginLog, KnowsHowARunEnded) {
    PluginLog log;
    log.add("// Plugin>  No components found. Exiting plugin.");
    log.add("// Plugin > Working memory full. Exiting plugin.");
    EXPECT_TRUE(log.foundNone() && log.ranOutOfMemory());
}

} // namespace
} // namespace zn::test
