#include "fingerprint/spectral_setup.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

struct Expected {
    int volumes, segmentLength, overlap, transformLength, frequencyCount;
};

TEST(SpectralSetup, FollowsTheNumberOfVolumes) {
    for (const Expected& e : {
             Expected{400, 88, 44, 256, 129},    // 400 / 4.5 = 88.9
             Expected{1350, 300, 150, 256, 129}, // log2 300 = 8.23
             Expected{1800, 400, 200, 512, 257}, // log2 400 = 8.64
             Expected{1629, 362, 181, 256, 129}, // log2 362 = 8.4998
             Expected{1634, 363, 181, 512, 257}, // log2 363 = 8.504
             Expected{9, 2, 1, 256, 129},
             Expected{5, 1, 0, 256, 129},
             Expected{4, 0, 0, 256, 129},
             Expected{1, 0, 0, 256, 129},
         }) {
        const SpectralSetup setup = spectralSetup(e.volumes, 2000);
        EXPECT_EQ(setup.segmentLength, e.segmentLength) << e.volumes;
        EXPECT_EQ(setup.overlap, e.overlap) << e.volumes;
        EXPECT_EQ(setup.transformLength, e.transformLength) << e.volumes;
        EXPECT_EQ(setup.frequencyCount, e.frequencyCount) << e.volumes;
    }
}

TEST(SpectralSetup, TakesTheRepetitionTimeInWholeSeconds) {
    EXPECT_EQ(spectralSetup(400, 1000).samplingFrequency, 1.0f);
    EXPECT_EQ(spectralSetup(400, 2000).samplingFrequency, 0.5f);
    EXPECT_EQ(spectralSetup(400, 2500).samplingFrequency, 0.5f);
    EXPECT_EQ(spectralSetup(400, 3000).samplingFrequency, 1.0f / 3);
}

TEST(SpectralSetup, BelowOneSecondSamplesInfinitelyFast) {
    for (const int trMs : {999, 500, 0, -999})
        EXPECT_TRUE(std::isinf(spectralSetup(400, trMs).samplingFrequency)) << trMs;
    EXPECT_EQ(spectralSetup(400, -2000).samplingFrequency, -0.5f);
}

TEST(FrequencyCount, OfEvenAndOddTransforms) {
    EXPECT_EQ(frequencyCount(256), 129);
    EXPECT_EQ(frequencyCount(5), 3);
}

} // namespace
} // namespace zn::test
