// Headers of both versions in both byte orders, put together byte by byte, and damaged in one field at a time.
#include "headless/nifti/image_header.h"
#include "headless/nifti/raw_header.h"

#include "files.h"
#include "headless/failure/failure.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::HasSubstr;

// A header of 3 x 4 x 5 voxels and 2 volumes of 16-bit integers with an sform; fields by their offsets in the standard.
class HeaderBytes {
public:
    HeaderBytes(int version, bool swapped) : version_(version), swapped_(swapped), bytes_(first() ? 352 : 544, '\0') {
        put(0, std::int32_t{first() ? 348 : 540});
        std::memcpy(bytes_.data() + (first() ? 344 : 4), first() ? "n+1" : "n+2\0\r\n\032\n", first() ? 4 : 8);
        setAxes({4, 3, 4, 5, 2, 1, 1, 1});
        setType(4);
        for (std::size_t i = 0; i < 8; ++i) setReal(first() ? 76 : 104, i, 2.0);
        setOffset(first() ? 352 : 544);
        setCode(first() ? 254 : 348, 1);
        for (const std::size_t diagonal : {0U, 5U, 10U}) setSform(diagonal, 2.0);
    }

    bool first() const { return version_ == 1; }
    void setAxes(const std::array<std::int64_t, 8>& dim) {
        for (std::size_t i = 0; i < 8; ++i) setAxis(i, dim[i]);
    }
    void setAxis(std::size_t i, std::int64_t extent) {
        first() ? put(40 + 2 * i, static_cast<std::int16_t>(extent)) : put(16 + 8 * i, extent);
    }
    void setType(std::int16_t type) { put(first() ? 70 : 12, type); }
    void setOffset(double offset) {
        first() ? put(108, static_cast<float>(offset)) : put(168, static_cast<std::int64_t>(offset));
    }
    void setSform(std::size_t i, double value) { setReal(first() ? 280 : 400, i, value); }
    void setVoxelSize(std::size_t axis, double value) { setReal(first() ? 76 : 104, axis, value); }
    void setUnits(char units) { first() ? put(123, units) : put(500, std::int32_t{units}); }
    void setQuaternion(std::size_t i, double value) {
        setCode(first() ? 252 : 344, 1);
        setReal(first() ? 256 : 352, i, value);
    }
    std::string file() const { return bytes_ + std::string(2 * 3 * 4 * 5 * 2, '\1'); }

private:
    void setReal(std::size_t offset, std::size_t i, double value) {
        first() ? put(offset + 4 * i, static_cast<float>(value)) : put(offset + 8 * i, value);
    }
    void setCode(std::size_t offset, int code) {
        first() ? put(offset, static_cast<std::int16_t>(code)) : put(offset, std::int32_t{code});
    }
    template <class Value> void put(std::size_t offset, Value value) {
        std::array<char, sizeof(Value)> stored{};
        std::memcpy(stored.data(), &value, sizeof value);
        if (swapped_) std::reverse(stored.begin(), stored.end());
        std::copy(stored.begin(), stored.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset));
    }

    int version_;
    bool swapped_;
    std::string bytes_;
};

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class RawHeaderTest : public testing::TestWithParam<std::tuple<int, bool>> {
protected:
    RawHeaderTest() : bytes(std::get<0>(GetParam()), std::get<1>(GetParam())) {}

    // What reading the header is refused with; empty when it is not.
    std::string refusal() {
        writeFile(folder / "a.nii", bytes.file());
        try {
            readImageHeader(folder / "a.nii");
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.status(), ExitStatus::kInput);
            return failure.what();
        }
        return "";
    }

    TemporaryFolder folder;
    HeaderBytes bytes;
};

TEST_P(RawHeaderTest, AWholeHeaderIsRead) {
    ASSERT_EQ(refusal(), "");
    const ImageHeader header = readImageHeader(folder / "a.nii");
    EXPECT_THAT(header.size, testing::ElementsAre(3, 4, 5));
    EXPECT_EQ(header.volumes, 2);
    EXPECT_EQ(header.affine[1][1], 2.0);
    EXPECT_EQ(readRawHeader(folder / "a.nii").dataOffset, bytes.first() ? 352 : 544);
    EXPECT_FALSE(readRawHeader(folder / "a.nii").separateData);
}

TEST_P(RawHeaderTest, ImpossibleNumbersOfAxesAreRefused) {
    for (const std::int64_t axes : {-1, 0, 8, 9, 100, 2000, 32767}) {
        bytes.setAxis(0, axes);
        EXPECT_THAT(refusal(), HasSubstr("it has " + std::to_string(axes) + " axes instead of 1 to 7"));
    }
}

TEST_P(RawHeaderTest, AxesWithoutElementsAreRefused) {
    for (const std::int64_t extent : {0, -3}) {
        bytes.setAxis(2, extent);
        EXPECT_THAT(refusal(), HasSubstr("its axis 2 has " + std::to_string(extent) + " elements"));
    }
}

TEST_P(RawHeaderTest, UnusedAxesWithoutElementsAreIgnored) {
    bytes.setAxes({2, 3, 4, 0, 0, 0, 0, 0});
    ASSERT_EQ(refusal(), "");
    const ImageHeader header = readImageHeader(folder / "a.nii");
    EXPECT_THAT(header.size, testing::ElementsAre(3, 4, 1));
    EXPECT_EQ(header.volumes, 1);
}

TEST_P(RawHeaderTest, DataTypesThatDoNotExistAreRefused) {
    for (const int type : {0, -4, 3, 5, 1000, 32767}) {
        bytes.setType(static_cast<std::int16_t>(type));
        EXPECT_THAT(refusal(), HasSubstr("there is no data type " + std::to_string(type)));
    }
}

TEST_P(RawHeaderTest, AnAffineThatIsNotFiniteIsRefused) {
    for (const double value : {kNaN, std::numeric_limits<double>::infinity()}) {
        bytes.setSform(7, value);
        EXPECT_THAT(refusal(), HasSubstr("its affine or its voxel sizes hold values that are not finite"));
    }
    bytes.setSform(7, 0.0);
    bytes.setQuaternion(4, kNaN);
    EXPECT_THAT(refusal(), HasSubstr("not finite"));
    bytes.setQuaternion(4, 0.0);
    bytes.setVoxelSize(3, kNaN);
    EXPECT_THAT(refusal(), HasSubstr("not finite"));
}

TEST_P(RawHeaderTest, AGeometryThatAResultCannotStoreIsRefused) {
    bytes.setSform(7, 1e38);
    EXPECT_EQ(refusal(), "");
    bytes.setUnits(1); // metres, a thousand millimetres each
    EXPECT_THAT(refusal(), HasSubstr("its affine or its voxel sizes are too large"));
    bytes.setSform(7, 0.0);
    bytes.setVoxelSize(3, 1e38);
    EXPECT_THAT(refusal(), HasSubstr("too large"));
    bytes.setVoxelSize(3, 2.0);
    bytes.setQuaternion(1, 1e38);
    EXPECT_THAT(refusal(), HasSubstr("too large"));
}

TEST_P(RawHeaderTest, DataThatCannotBeginThereAreRefused) {
    for (const double offset : {2e10, -352.0, 1e9}) {
        bytes.setOffset(offset);
        EXPECT_NE(refusal(), "") << offset;
    }
    bytes.setOffset(2e10);
    EXPECT_THAT(refusal(), HasSubstr("its data cannot begin at byte 20000000000"));
}

TEST_P(RawHeaderTest, ACutHeaderIsNotAnImage) {
    const std::string file = bytes.file();
    for (const std::size_t length : {0U, 1U, 4U, 100U, 347U}) {
        writeFile(folder / "cut.nii", file.substr(0, length));
        EXPECT_THROW(readRawHeader(folder / "cut.nii"), Failure) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(VersionAndByteOrder, RawHeaderTest, testing::Combine(testing::Values(1, 2), testing::Bool()),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param) == 1 ? "Nifti1" : "Nifti2") +
                                    (std::get<1>(test.param) ? "Swapped" : "Native");
                         });

} // namespace
} // namespace zn::test
