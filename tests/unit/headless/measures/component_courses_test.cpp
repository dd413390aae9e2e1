// Expected values: numpy.linalg.lstsq(S.T, X - X.mean(0)), and the sums of squares written out in numpy.
#include "headless/measures/component_courses.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsNan;

// Four analysed voxels and one outside the mask, three volumes.
constexpr short kData[] = {10, 12, 11, 20, 19, 24, 99, -99, 7, 33, 30, 27, 7, 7, 10};
const std::vector<unsigned char> kMask = {1, 1, 0, 1, 1};

TimeSeries series(bool asFloat) {
    TimeSeries result;
    result.voxels = 5;
    result.volumes = 3;
    if (asFloat) {
        result.floats = std::make_unique<float[]>(15);
        std::copy(std::begin(kData), std::end(kData), result.floats.get());
    } else {
        result.shorts = std::make_unique<std::int16_t[]>(15);
        std::copy(std::begin(kData), std::end(kData), result.shorts.get());
    }
    return result;
}

VolumeMaps mapsOf(const std::vector<std::vector<float>>& values) {
    NRVMPsHeader header{};
    header.boundingBox[1] = 5; // x from 0 to 5
    header.boundingBox[3] = header.boundingBox[5] = 1;
    header.resolution = 1;
    VolumeMaps maps;
    maps.create(static_cast<int>(values.size()), 3, 16, header);
    for (std::size_t i = 0; i < values.size(); ++i) {
        NRVMPMap record{};
        std::copy(values[i].begin(), values[i].end(), maps.describe(static_cast<int>(i), record));
    }
    return maps;
}

TEST(ComponentCourses, AreTheLeastSquaresFitOfTheMaps) {
    const VolumeMaps maps = mapsOf({{1, -2, 0, 0.5f, 0.5f}, {0.5f, 1, 0, 2, -3}}); // not orthogonal
    MatrixProducts products(1);
    for (const bool asFloat : {false, true}) {
        const ComponentCourses result = fitCourses(series(asFloat), kMask, maps, products);
        EXPECT_THAT(result.spatialMean, ElementsAre(17.5f, 17.0f, 18.0f));
        ASSERT_EQ(result.courses.size(), 2U);
        EXPECT_THAT(result.courses[0], ElementsAre(FloatNear(-0.26890756f, 1e-6f), FloatNear(0.05546218f, 1e-6f),
                                                   FloatNear(-2.34789916f, 1e-6f)));
        EXPECT_THAT(result.courses[1], ElementsAre(FloatNear(4.2605042f, 1e-6f), FloatNear(3.90252101f, 1e-6f),
                                                   FloatNear(2.79327731f, 1e-6f)));
        EXPECT_NEAR(result.explainedPercent[0], 49.22773815408517, 1e-4); // products in single precision
        EXPECT_NEAR(result.explainedPercent[1], 43.8916037003036, 1e-4);
    }
}

TEST(ComponentCourses, AreUndefinedForMapsThatAreLinearlyDependentOrNotFinite) {
    MatrixProducts products(1);
    for (const auto& values : {std::vector<std::vector<float>>{{1, -2, 0, 0.5f, 0.5f}, {0, 0, 0, 0, 0}},
                               {{1, -2, 0, 0.5f, 0.5f}, {0.5f, NAN, 0, 2, -3}}}) {
        const ComponentCourses result = fitCourses(series(false), kMask, mapsOf(values), products);
        EXPECT_THAT(result.courses, Each(Each(IsNan())));
        EXPECT_THAT(result.explainedPercent, Each(IsNan()));
    }
}

TEST(ComponentCourses, AreTheSameForAnyNumberOfThreads) {
    constexpr int kVoxels = 5000; // several blocks
    TimeSeries data;
    data.voxels = kVoxels;
    data.volumes = 40;
    data.floats = std::make_unique<float[]>(kVoxels * 40);
    std::uint32_t state = 5;
    const auto next = [&state] { return static_cast<float>((state = state * 1664525U + 1013904223U) >> 20); };
    for (int i = 0; i < kVoxels * 40; ++i) data.floats[static_cast<std::size_t>(i)] = next();
    NRVMPsHeader header{};
    header.boundingBox[1] = kVoxels;
    header.boundingBox[3] = header.boundingBox[5] = 1;
    header.resolution = 1;
    VolumeMaps maps;
    maps.create(7, 40, 16, header);
    for (int i = 0; i < 7; ++i) {
        NRVMPMap record{};
        float* values = maps.describe(i, record);
        for (int v = 0; v < kVoxels; ++v) values[v] = next() - 2048.0f;
    }
    const std::vector<unsigned char> mask(kVoxels, 1);
    MatrixProducts one(1);
    MatrixProducts three(3);
    const ComponentCourses a = fitCourses(data, mask, maps, one);
    const ComponentCourses b = fitCourses(data, mask, maps, three);
    EXPECT_EQ(a.courses, b.courses);
    EXPECT_EQ(a.explainedPercent, b.explainedPercent);
}

} // namespace
} // namespace zn::test
