// Volumes arrive in groups, some of which are read while others are transposed.
#include "headless/nifti/time_series.h"

#include "files.h"
#include "headless/nifti/image_writer.h"

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

constexpr std::array<int, 3> kSize = {5, 4, 3};
constexpr int kVoxels = 60;

int valueAt(int voxel, int volume) {
    return 100 * voxel + volume;
}

// An image in which every value encodes its position.
template <class Value> ImageHeader imageOf(const TemporaryFolder& folder, int volumes, int dataType) {
    ImageWriter::Layout layout;
    layout.volumes = volumes;
    layout.dataType = dataType;
    ImageWriter writer(folder / "image.nii.gz", *newGrid(kSize, 2.0), layout);
    std::vector<Value> volume(kVoxels);
    for (int t = 0; t < volumes; ++t) {
        for (int v = 0; v < kVoxels; ++v) volume[static_cast<std::size_t>(v)] = static_cast<Value>(valueAt(v, t));
        writer.write(volume);
    }
    writer.close();
    return readImageHeader(folder / "image.nii.gz");
}

template <class Value> void expectEveryValue(const Value* series, int volumes, int skip) {
    for (int v = 0; v < kVoxels; ++v) {
        for (int t = 0; t < volumes; ++t) {
            ASSERT_EQ(series[v * volumes + t], static_cast<Value>(valueAt(v, t + skip))) << v << " " << t;
        }
    }
}

// One group, exactly two, two and a remainder, and three.
TEST(TimeSeries, PutsEveryShortInItsPlaceForAnyNumberOfVolumes) {
    for (const int volumes : {1, 32, 33, 64, 70, 96}) {
        const TemporaryFolder folder;
        const TimeSeries series = readTimeSeries(imageOf<std::int16_t>(folder, volumes, NIFTI_TYPE_INT16));
        ASSERT_EQ(series.volumes, volumes);
        ASSERT_FALSE(series.isFloat());
        expectEveryValue(series.shorts.get(), volumes, 0);
    }
}

TEST(TimeSeries, PutsEveryFloatInItsPlaceForAnyNumberOfVolumes) {
    for (const int volumes : {1, 16, 17, 32, 39, 48}) {
        const TemporaryFolder folder;
        const TimeSeries series = readTimeSeries(imageOf<float>(folder, volumes, NIFTI_TYPE_FLOAT32));
        ASSERT_EQ(series.volumes, volumes);
        ASSERT_TRUE(series.isFloat());
        expectEveryValue(series.floats.get(), volumes, 0);
    }
}

TEST(TimeSeries, PutsEveryShortInItsPlaceAsFloat) {
    for (const int volumes : {1, 16, 17, 39}) {
        const TemporaryFolder folder;
        const TimeSeries series = readTimeSeries(imageOf<std::int16_t>(folder, volumes, NIFTI_TYPE_INT16), 0, true);
        ASSERT_TRUE(series.isFloat());
        expectEveryValue(series.floats.get(), volumes, 0);
    }
}

TEST(TimeSeries, OmitsTheFirstVolumes) {
    const TemporaryFolder folder;
    const TimeSeries series = readTimeSeries(imageOf<std::int16_t>(folder, 70, NIFTI_TYPE_INT16), 3);
    ASSERT_EQ(series.volumes, 67);
    expectEveryValue(series.shorts.get(), 67, 3);
}

template <class Value> void expectValuesInsideAndSums(const Value* series, const TimeSeries& facts, int skip) {
    for (int v = 0; v < kVoxels; ++v) {
        double sum = 0.0;
        for (int t = 0; t < facts.volumes; ++t) {
            const auto expected = static_cast<Value>(valueAt(v, t + skip));
            sum += static_cast<double>(expected);
            if (v % 7 != 2) continue;
            ASSERT_EQ(series[v * facts.volumes + t], expected) << v << " " << t;
        }
        EXPECT_EQ(facts.sums[static_cast<std::size_t>(v)], sum) << v;
    }
}

TEST(TimeSeries, HasTheValuesInsideAndTheSumOfEveryVoxel) {
    std::vector<unsigned char> inside(kVoxels);
    for (std::size_t v = 2; v < inside.size(); v += 7) inside[v] = 1;
    for (const int volumes : {4, 36, 70}) {
        const TemporaryFolder folder;
        const ImageHeader image = imageOf<std::int16_t>(folder, volumes, NIFTI_TYPE_INT16);
        const TimeSeries shorts = readTimeSeries(image, 3, false, inside);
        expectValuesInsideAndSums(shorts.shorts.get(), shorts, 3);
        const TimeSeries floats = readTimeSeries(image, 3, true, inside);
        expectValuesInsideAndSums(floats.floats.get(), floats, 3);
    }
}

} // namespace
} // namespace zn::test
