// Smoothing, high-pass filter and scaling, compared with scipy, numpy and closed forms.
#include "headless/prepare/gaussian_kernel.h"
#include "headless/prepare/high_pass.h"
#include "headless/prepare/scale_voxels.h"
#include "headless/prepare/smooth_series.h"
#include "headless/prepare/smoothness.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
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

std::vector<float> valuesInside(const Sample& sample) {
    std::vector<float> values;
    for (std::size_t i = 0; i < sample.values.size(); ++i) {
        if (sample.mask[i / static_cast<std::size_t>(sample.volumes)] != 0) values.push_back(sample.values[i]);
    }
    return values;
}

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
}

// Along one axis, voxel by voxel; the values outside the grid are 0.
void smoothLiterally(Sample& sample, std::size_t axis, const std::vector<float>& kernel) {
    const std::vector<float> before = sample.values;
    const int radius = static_cast<int>(kernel.size()) - 1;
    const int step = axis == 0 ? 1 : axis == 1 ? sample.size[0] : sample.size[0] * sample.size[1];
    for (int v = 0; v < static_cast<int>(sample.mask.size()); ++v) {
        const int at = v / step % sample.size[axis];
        for (int t = 0; t < sample.volumes; ++t) {
            float sum = 0.0f;
            for (int d = std::max(-radius, -at); d <= std::min(radius, sample.size[axis] - 1 - at); ++d) {
                sum += kernel[static_cast<std::size_t>(std::abs(d))] *
                       before[static_cast<std::size_t>((v + d * step) * sample.volumes + t)];
            }
            sample.values[static_cast<std::size_t>(v * sample.volumes + t)] = sum;
        }
    }
}

// Few and many volumes, and a mask with edges everywhere.
TEST(SmoothSeries, GivesTheBitsOfTheLiteralForm) {
    const std::array<double, 3> sigma = {0.7, 0.5, 0.9};
    for (const int volumes : {1, 31, 32, 70}) {
        Sample sample = noise({9, 8, 7}, volumes);
        for (std::size_t v = 0; v < sample.mask.size(); ++v) sample.mask[v] = v % 5 < 3 && v % 72 < 50;
        Sample literal = sample;
        Sample weights{sample.size, 1};
        for (std::size_t i = 0; i < literal.values.size(); ++i) {
            if (sample.mask[i / static_cast<std::size_t>(volumes)] == 0) literal.values[i] = 0.0f;
        }
        weights.values.assign(sample.mask.begin(), sample.mask.end());
        for (std::size_t axis = 0; axis < 3; ++axis) {
            smoothLiterally(literal, axis, gaussianKernel(sigma[axis]));
            smoothLiterally(weights, axis, gaussianKernel(sigma[axis]));
        }
        for (std::size_t i = 0; i < literal.values.size(); ++i) {
            const std::size_t v = i / static_cast<std::size_t>(volumes);
            literal.values[i] /= weights.values[v];
        }
        WorkerThreads threads(2);
        smoothSeries(sample.series(), sigma, threads);
        EXPECT_EQ(valuesInside(sample), valuesInside(literal)) << volumes;
    }
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
    const auto fwhm = estimateSmoothness(sample.series(), threads);
    EXPECT_NEAR(fwhm[0], 1.5 * 2.3548, 0.1);
    EXPECT_NEAR(fwhm[1], 1.2 * 2.3548, 0.1);
    EXPECT_NEAR(fwhm[2], 1.0 * 2.3548, 0.1);
}

TEST(Smoothness, OfWhiteNoiseIsBelowAVoxel) {
    Sample sample = noise({32, 32, 32}, 6);
    WorkerThreads threads(1);
    EXPECT_THAT(estimateSmoothness(sample.series(), threads), Each(testing::Lt(0.7)));
}

TEST(Smoothness, IsZeroAlongAnAxisOfOneVoxel) {
    Sample sample = noise({16, 16, 1}, 6);
    WorkerThreads threads(1);
    EXPECT_EQ(estimateSmoothness(sample.series(), threads)[2], 0.0);
}

// The formula with all sums in double precision; few and many volumes.
TEST(Smoothness, IsThatOfTheFormula) {
    for (const int volumes : {2, 9, 10, 45}) {
        Sample sample = noise({12, 6, 5}, volumes);
        WorkerThreads threads(1);
        smoothSeries(sample.series(), {1.0, 1.0, 1.0}, threads);
        double differences = 0.0;
        double squares = 0.0;
        const std::vector<float>& values = sample.values;
        for (std::size_t v = 0; v + 1 < sample.mask.size(); ++v) {
            if (v % 12 == 11) continue;
            for (std::size_t t = 1; t < static_cast<std::size_t>(volumes); ++t) {
                const std::size_t i = v * static_cast<std::size_t>(volumes) + t;
                const std::size_t j = i + static_cast<std::size_t>(volumes);
                const double a = static_cast<double>(values[i]) - static_cast<double>(values[i - 1]);
                const double b = static_cast<double>(values[j]) - static_cast<double>(values[j - 1]);
                differences += (a - b) * (a - b);
                squares += a * a + b * b;
            }
        }
        const double expected = std::sqrt(-2.0 * std::log(2.0) / std::log(1.0 - differences / squares));
        EXPECT_NEAR(estimateSmoothness(sample.series(), threads)[0], expected, 1e-4 * expected) << volumes;
    }
}

TEST(Smoothness, HasTheSameBitsForAnyNumberOfThreads) {
    Sample sample = noise({11, 7, 6}, 21);
    WorkerThreads single(1);
    WorkerThreads team(3);
    EXPECT_EQ(estimateSmoothness(sample.series(), single), estimateSmoothness(sample.series(), team));
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

TEST(Scaling, ToPercentTakesAMeanOfRoundingErrorsForNone) {
    Sample sample{{1, 1, 1}, 4};
    sample.values = {1000.0f, -1000.0f, 500.0f, -499.9999f}; // a mean of 3e-5
    WorkerThreads threads(1);
    scaleToPercent(sample.series(), threads);
    EXPECT_THAT(sample.values, Each(0.0f));
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
