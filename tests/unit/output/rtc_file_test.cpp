#include "output/rtc_file.h"

#include "host/scratch_directory.h"
#include "numeric/array_owners.h"

#include <gtest/gtest.h>

#include <limits>

namespace zn::test {
namespace {

class RtcFile : public testing::Test {
    ScratchDirectory directory;
};

TEST_F(RtcFile, HasFourHeaderLinesTheNamesAndOneLinePerVolume) {
    OffsetMatrix<float> a(0, 1, 0, 2);
    a[0][0] = 0.0f;
    a[0][1] = 0.5f;
    a[0][2] = 1.0f;
    a[1][0] = 1.0f;
    a[1][1] = 0.25f;
    a[1][2] = 0.0f;
    writeRtcDesignMatrix("run_ICA.rtc", a.get(), 2, 3);
    EXPECT_EQ(platformTextOf("run_ICA.rtc"), "FileVersion:     2\n"
                                             "Type:            DesignMatrix\n"
                                             "NrOfPredictors:  3\n"
                                             "NrOfDataPoints:  2\n"
                                             "\n"
                                             "\"TC1\" \"TC2\" \"TC3\" \n"
                                             "    0   0.5     1 \n"
                                             "    1  0.25     0 \n");
}

TEST_F(RtcFile, ShowsAConstantTimeCourseAsNaN) {
    OffsetMatrix<float> a(0, 1, 0, 0);
    a.fill(std::numeric_limits<float>::quiet_NaN());
    writeRtcDesignMatrix("run_ICA.rtc", a.get(), 2, 1);
    EXPECT_TRUE(platformTextOf("run_ICA.rtc").ends_with("\"TC1\" \n  nan \n  nan \n"));
}

TEST_F(RtcFile, WithoutPredictorsHasEmptyLines) {
    OffsetMatrix<float> a(0, 1, 0, 0);
    writeRtcDesignMatrix("run_ICA.rtc", a.get(), 2, 0);
    EXPECT_TRUE(platformTextOf("run_ICA.rtc").ends_with("NrOfDataPoints:  2\n\n\n\n\n"));
}

TEST_F(RtcFile, PrintsSixSignificantDigits) {
    OffsetMatrix<float> a(0, 0, 0, 1);
    a[0][0] = 1.0f / 3.0f;
    a[0][1] = 125000.25f; // more digits than are printed
    writeRtcDesignMatrix("run_ICA.rtc", a.get(), 1, 2);
    EXPECT_TRUE(platformTextOf("run_ICA.rtc").ends_with("\n0.333333 125000 \n"));
}

} // namespace
} // namespace zn::test
