#include "ica/eigenvalue_file.h"

#include "host/scratch_directory.h"
#include "numeric/array_owners.h"

#include <gtest/gtest.h>

#include <cstring>

namespace zn::test {
namespace {

class EigenvalueFile : public testing::Test {
    ScratchDirectory directory;
};

double doubleAt(const std::string& bytes, std::size_t index) {
    double value = 0;
    std::memcpy(&value, bytes.data() + index * sizeof value, sizeof value);
    return value;
}

TEST_F(EigenvalueFile, WritesTheValuesThenTheVectorsRowByRow) {
    OffsetVector<double> d(1, 2);
    d[1] = 9;
    d[2] = 4;
    OffsetMatrix<double> v(1, 2, 1, 2);
    v[1][1] = 0.6;
    v[1][2] = -0.8;
    v[2][1] = 0.8;
    v[2][2] = 0.6;
    writeEigenvalueFile("run.eig", d.get(), v.get(), 2);
    const std::string bytes = contentOf("run.eig");
    ASSERT_EQ(bytes.size(), 8U * 2 + 8U * 4);
    const double expected[] = {9, 4, 0.6, -0.8, 0.8, 0.6};
    for (std::size_t i = 0; i < 6; ++i) EXPECT_EQ(doubleAt(bytes, i), expected[i]);
}

TEST_F(EigenvalueFile, IsLittleEndian) {
    OffsetVector<double> d(1, 1);
    d[1] = 1.0; // 0x3ff0000000000000
    OffsetMatrix<double> v(1, 1, 1, 1);
    v[1][1] = 1.0;
    writeEigenvalueFile("run.eig", d.get(), v.get(), 1);
    const std::string one("\x00\x00\x00\x00\x00\x00\xf0\x3f", 8);
    EXPECT_EQ(contentOf("run.eig"), one + one); // 16 bytes for a single volume
}

TEST_F(EigenvalueFile, IsSilentlySkippedIfItCannotBeOpened) {
    OffsetVector<double> d(1, 1);
    OffsetMatrix<double> v(1, 1, 1, 1);
    d[1] = v[1][1] = 1.0;
    writeEigenvalueFile("nowhere/run.eig", d.get(), v.get(), 1);
    EXPECT_FALSE(std::filesystem::exists("nowhere"));
}

} // namespace
} // namespace zn::test
