#include "output/text_matrix.h"

#include "host/scratch_directory.h"
#include "numeric/array_owners.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>

namespace zn::test {
namespace {

class TextMatrix : public testing::Test {
    ScratchDirectory directory;
};

TEST_F(TextMatrix, OfDoublesHasFieldsOfTenEachFollowedByABlank) {
    OffsetMatrix<double> m(1, 2, 1, 2);
    m[1][1] = 0.25;
    m[1][2] = m[2][1] = -1.5;
    m[2][2] = 1234567.0;
    writeDoubleMatrix("m.txt", m.get(), 2, 2);
    EXPECT_EQ(platformTextOf("m.txt"), "      0.25       -1.5 \n"
                                       "      -1.5 1.23457e+06 \n");
}

TEST_F(TextMatrix, OfFloatsHasFieldsOfFiveAndStartsAtZero) {
    OffsetMatrix<float> m(0, 1, 0, 2);
    m[0][0] = 0.0f;
    m[0][1] = 0.5f;
    m[0][2] = 1.0f;
    m[1][0] = 0.25f;
    m[1][1] = -0.0f;
    m[1][2] = 100.0f;
    writeFloatMatrix("m.txt", m.get(), 2, 3);
    EXPECT_EQ(platformTextOf("m.txt"), "    0   0.5     1 \n"
                                       " 0.25    -0   100 \n");
}

TEST_F(TextMatrix, WritesAValueWiderThanItsFieldInFull) {
    OffsetMatrix<float> m(0, 0, 0, 1);
    m[0][0] = -0.123456f;
    m[0][1] = 7.0f;
    writeFloatMatrix("m.txt", m.get(), 1, 2);
    EXPECT_EQ(platformTextOf("m.txt"), "-0.123456     7 \n");
}

TEST_F(TextMatrix, FormatsNumbersAsAStandardStreamDoes) {
    const double values[] = {0.5,
                             1234567.0,
                             100000.0,
                             1000000.0,
                             0.0001,
                             0.00001,
                             -3.14159265,
                             1e300,
                             5e-324,
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};
    std::ostringstream expected;
    OffsetMatrix<double> m(1, 1, 1, static_cast<int>(std::size(values)));
    int column = 0;
    for (const double value : values) {
        m[1][++column] = value;
        expected.width(10);
        expected << value << ' ';
    }
    expected << '\n';
    writeDoubleMatrix("m.txt", m.get(), 1, column);
    EXPECT_EQ(platformTextOf("m.txt"), expected.str());
}

TEST_F(TextMatrix, OfVoxelsStartsWithTheirNumber) {
    OffsetMatrix<int> table(1, 4, 1, 3);
    table.fill(-7); // of the first row only the first element is written
    table[1][1] = 3;
    const int voxels[3][3] = {{1, 5, 3}, {10, 200, 3000}, {123456, 2, 3}};
    for (int v = 0; v < 3; ++v) {
        for (int axis = 0; axis < 3; ++axis) table[v + 2][axis + 1] = voxels[v][axis];
    }
    writeVoxelTable("ICA.vox", table.get(), 4, 3);
    EXPECT_EQ(platformTextOf("ICA.vox"), "     3 \n"
                                         "    1     5     3 \n"
                                         "   10   200  3000 \n"
                                         "123456     2     3 \n");
}

TEST_F(TextMatrix, OfAVectorHasOneNumberPerLineWithoutABlank) {
    OffsetVector<double> v(1, 2);
    v[1] = 0.25;
    v[2] = -1.0;
    writeTextVector("v.txt", v.get(), 1, 2, 10);
    EXPECT_EQ(platformTextOf("v.txt"), "      0.25\n        -1\n");
}

TEST_F(TextMatrix, ReplacesAnExistingFile) {
    OffsetMatrix<float> m(0, 1, 0, 0);
    m.fill(1.0f);
    writeFloatMatrix("m.txt", m.get(), 2, 1);
    writeFloatMatrix("m.txt", m.get(), 1, 1);
    EXPECT_EQ(platformTextOf("m.txt"), "    1 \n");
}

TEST_F(TextMatrix, LargerThanTheBufferIsComplete) {
    const int rows = 20'000; // 120,000 characters
    OffsetMatrix<float> m(0, rows - 1, 0, 0);
    m.fill(0.5f);
    writeFloatMatrix("m.txt", m.get(), rows, 1);
    std::string expected;
    for (int i = 0; i < rows; ++i) expected += "  0.5 \n";
    EXPECT_EQ(platformTextOf("m.txt"), expected);
}

TEST_F(TextMatrix, InAMissingFolderIsSilentlySkipped) {
    OffsetMatrix<float> m(0, 0, 0, 0);
    m.fill(0.0f);
    writeFloatMatrix("nowhere/m.txt", m.get(), 1, 1);
    EXPECT_FALSE(std::filesystem::exists("nowhere"));
}

} // namespace
} // namespace zn::test
