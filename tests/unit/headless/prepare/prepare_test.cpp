// Smoothing, high-pass filter and scaling, compared with scipy, numpy and closed forms.
#include "headless/prepare/high_pass.h"
#include "headless/prepare/scale_voxels.h"
#include "headless/prepare/smooth_series.h"
#include "headless/prepare/smoothness.h"

#include <cmath>
#include <random>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

using testing::Each;
using testing::FloatNear;
using testing::Pointwise;

// Time courses on a grid, every voxel inside.
struct Sample {
    std::array<int, 3> size;
    int volumes;
    std::vector<unsigned char> mask =
        std::vector<unsigned char>(static_cast<std::size_t>(size[0] * size[1] * size[2]), 1);
    std::vector<float> values = std::vector<float>(mask.size() * static_cast<std::size_t>(volumes));

    MaskedSeries series() { return {values.data(), volumes, size, mask}; }
};

Sample noise(const std::array<int, 3>& size, int volumes) {
    Sample sample{size, volumes};
    std::mt19937 generator(1);
    std::normal_distribution<float> normal;
    for (float& value : sample.values) value = 100.0f + normal(generator);
    return sample;
}

// The one whose smoothed values were computed with scipy.
Sample patterned() {
    Sample sample{{5, 4, 3}, 2};
    for (int v = 0; v < 60; ++v) {
        sample.mask[static_cast<std::size_t>(v)] = v % 7 != 3;
        for (int t = 0; t < 2; ++t) {
            sample.values[static_cast<std::size_t>(2 * v + t)] = static_cast<float>(1000 + v * v * (t + 3) % 97);
        }
    }
    return sample;
}

// scipy.ndimage.gaussian_filter(mode="constant", truncate=4) of the masked image over that of the mask.
TEST(SmoothSeries, IsTheNormalisedConvolutionOfScipy) {
    Sample sample = patterned();
    WorkerThreads threads(1);
    smoothSeries(sample.series(), {1.1, 0.9, 0.8}, threads);
    const std::vector<float> firstVolume = {sample.values[0], sample.values[14], sample.values[44]};
    const std::vector<float> secondVolume = {sample.values[1], sample.values[15], sample.values[45]};
    EXPECT_THAT(firstVolume, Pointwise(FloatNear(1e-2f), {1031.504996f, 1046.269546f, 1050.576144f}));
    EXPECT_THAT(secondVolume, Pointwise(FloatNear(1e-2f), {1024.586600f, 1043.608902f, 1045.170159f}));
    EXPECT_EQ(sample.values[6], 0.0f) << "a voxel outside the mask";
}

TEST(SmoothSeries, DoesNotDarkenTheEdges) {
    Sample sample{{6, 5, 4}, 3};
    sample.values.assign(sample.values.size(), 250.0f);
    sample.mask[17] = 0;
    WorkerThreads threads(1);
    smoothSeries(sample.series(), {1.5, 1.5, 1.5}, threads);
    sample.values[51] = sample.values[52] = sample.values[53] = 250.0f; // those of voxel 17
    EXPECT_THAT(sample.values, Each(FloatNear(250.0f, 1e-3f)));
}

TEST(SmoothSeries, SmoothsASingleSliceInItsPlane) {
    Sample flat = noise({9, 8, 1}, 2);
    Sample deep = noise({9, 8, 1}, 2);
    WorkerThreads threads(1);
    smoothSeries(flat.series(), {1.0, 1.0, 0.0}, threads);
    smoothSeries(deep.series(), {1.0, 1.0, 2.0}, threads);
    EXPECT_EQ(flat.values, deep.values);
}

TEST(SmoothSeries, HasTheSameBitsForAnyNumberOfThreads) {
    Sample one = noise({11, 7, 6}, 5);
    Sample three = noise({11, 7, 6}, 5);
    WorkerThreads single(1);
    WorkerThreads team(3);
    smoothSeries(one.series(), {1.2, 0.7, 0.9}, single);
    smoothSeries(three.series(), {1.2, 0.7, 0.9}, team);
    EXPECT_EQ(one.values, three.values);
}

TEST(Smoothness, OfFilteredWhiteNoiseIsThatOfTheFilter) {
    Sample sample = noise({32, 32, 32}, 6);
    WorkerThreads threads(2);
    smoothSeries(sample.series(), {1.5, 1.2, 1.0}, threads);
    const auto fwhm = estimateSmoothness(sample.series());
    EXPECT_NEAR(fwhm[0], 1.5 * 2.3548, 0.1);
    EXPECT_NEAR(fwhm[1], 1.2 * 2.3548, 0.1);
    EXPECT_NEAR(fwhm[2], 1.0 * 2.3548, 0.1);
}

TEST(Smoothness, OfWhiteNoiseIsBelowAVoxel) {
    Sample sample = noise({32, 32, 32}, 6);
    EXPECT_THAT(estimateSmoothness(sample.series()), Each(testing::Lt(0.7)));
}

TEST(Smoothness, IsZeroAlongAnAxisOfOneVoxel) {
    Sample sample = noise({16, 16, 1}, 6);
    EXPECT_EQ(estimateSmoothness(sample.series())[2], 0.0);
}

// Cosine k has the period 2 T TR / k: 600 s, 300 s, 200 s, 150 s, 120 s ...
TEST(HighPass, RemovesTheCosinesWithLongerPeriods) {
    EXPECT_EQ(cosinesBelow(128.0, 150, 2.0), 4);
    EXPECT_EQ(cosinesBelow(120.0, 150, 2.0), 4) << "the cosine at the cut-off stays";
    EXPECT_EQ(cosinesBelow(119.0, 150, 2.0), 5);
    EXPECT_EQ(cosinesBelow(1000.0, 150, 2.0), 0);
}

// numpy.linalg.lstsq with a constant and cos(pi k (t + 1/2) / 10), k = 1, 2, 3; the three cosines subtracted.
TEST(HighPass, IsNumpysProjection) {
    Sample sample{{1, 1, 1}, 10};
    sample.values = {100, 110, 111, 103, 109, 106, 117, 119, 112, 119};
    WorkerThreads threads(1);
    removeCosines(sample.series(), 3, threads);
    EXPECT_THAT(sample.values,
                Pointwise(FloatNear(2e-5f), {105.235157f, 115.105790f, 115.662950f, 106.673195f, 111.031207f,
                                             105.863220f, 114.497625f, 114.337050f, 105.723390f, 111.870415f}));
}

TEST(HighPass, LeavesVoxelsOutsideTheMask) {
    Sample sample{{2, 1, 1}, 3};
    sample.mask[0] = 0;
    sample.values = {1, 2, 3, 1, 2, 3};
    WorkerThreads threads(1);
    removeCosines(sample.series(), 1, threads);
    EXPECT_EQ(std::vector<float>(sample.values.begin(), sample.values.begin() + 3), (std::vector<float>{1, 2, 3}));
    EXPECT_THAT(std::vector<float>(sample.values.begin() + 3, sample.values.end()), Each(FloatNear(2.0f, 1e-6f)));
}

TEST(Scaling, ToPercentDividesByTheMean) {
    Sample sample{{2, 1, 1}, 2};
    sample.values = {150, 250, -1, -3}; // a mean of 200, and one that is not positive
    WorkerThreads threads(1);
    scaleToPercent(sample.series(), threads);
    EXPECT_THAT(sample.values, testing::ElementsAre(75.0f, 125.0f, 0.0f, 0.0f));
}

// (y - y.mean()) / y.std() in numpy.
TEST(Scaling, ToUnitVarianceRemovesTheMean) {
    Sample sample{{1, 1, 1}, 10};
    sample.values = {100, 110, 111, 103, 109, 106, 117, 119, 112, 119};
    WorkerThreads threads(1);
    scaleToUnitVariance(sample.series(), threads);
    EXPECT_THAT(sample.values, Pointwise(FloatNear(1e-6f), {-1.723179f, -0.097538f, 0.065026f, -1.235487f, -0.260102f,
                                                            -0.747795f, 1.040410f, 1.365538f, 0.227590f, 1.365538f}));
}

TEST(Scaling, ToUnitVarianceMakesRoundingErrorsConstant) {
    Sample sample{{1, 1, 1}, 4};
    sample.values = {10000.0f, 10000.001f, 10000.0f, 9999.999f};
    WorkerThreads threads(1);
    scaleToUnitVariance(sample.series(), threads);
    EXPECT_THAT(sample.values, Each(0.0f));
}

} // namespace
} // namespace zn::test
