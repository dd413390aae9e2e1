#include "headless/dimension/noise_edge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace zn::test {

using namespace headless;

namespace {

const std::vector<SpatialEigenvalue> kWhite = {{1.0, 1.0}};

TEST(NoiseEdge, OfWhiteNoiseIsThatOfMarchenkoAndPastur) {
    for (const std::int64_t voxels : {100, 400, 10000}) {
        const double ratio = 100.0 / static_cast<double>(voxels);
        const double expected = (1.0 + std::sqrt(ratio)) * (1.0 + std::sqrt(ratio));
        EXPECT_NEAR(noiseEdge(std::vector<double>(100, 1.0), kWhite, voxels), expected, 1e-9) << voxels;
        EXPECT_NEAR(noiseEdge(std::vector<double>(100, 7.0), kWhite, voxels), 7.0 * expected, 1e-8) << voxels;
    }
}

TEST(NoiseEdge, VoxelsThatAllRepeatHalfOfThemAreHalfAsMany) {
    // Half of the spatial eigenvalues are 2 and half are 0: white noise of V / 2 voxels.
    EXPECT_NEAR(noiseEdge(std::vector<double>(100, 1.0), {{2.0, 0.5}, {0.0, 0.5}}, 800), 2.25, 1e-9);
}

TEST(NoiseEdge, DirectionsWithoutVarianceDoNotCount) {
    std::vector<double> temporal(100, 1.0);
    temporal.resize(250, 0.0);
    EXPECT_NEAR(noiseEdge(temporal, kWhite, 400), 2.25, 1e-9);
}

TEST(NoiseEdge, OfColouredNoiseIsWhereSimulatedEigenvaluesEnd) {
    // numpy: a = numpy.linspace(0.5, 2, 200); s = [1.6] * 1000 + [0.4] * 1000; g = default_rng(1 ... 20).normal of
    // shape (2000, 200); the largest eigenvalue of (g * s^.5[:, None] * a^.5).T @ (same) / 2000 is 2.8212 on average.
    // That of a finite matrix lies a little below the edge.
    std::vector<double> temporal;
    for (int i = 0; i < 200; ++i) temporal.push_back(0.5 + 1.5 * i / 199.0);
    const double edge = noiseEdge(temporal, {{1.6, 0.5}, {0.4, 0.5}}, 2000);
    EXPECT_GT(edge, 2.8212);
    EXPECT_LT(edge, 1.02 * 2.8212);
}

TEST(GaussianSpectrum, HasTheIndependentVoxelsOfAGaussian) {
    // The mean of s^2 for a standard deviation of sigma voxels along one axis is sqrt(2 pi) sigma, by integration.
    const double sigma = 3.0 / std::sqrt(8.0 * std::numbers::ln2);
    double mean = 0.0;
    double meanSquare = 0.0;
    double weights = 0.0;
    for (const auto& s : gaussianSpectrum({3.0, 3.0, 0.0})) {
        weights += s.weight;
        mean += s.weight * s.value;
        meanSquare += s.weight * s.value * s.value;
    }
    EXPECT_NEAR(mean, 1.0, 1e-12);
    EXPECT_LE(weights, 1.0 + 1e-12);
    EXPECT_NEAR(meanSquare, 2.0 * std::numbers::pi * sigma * sigma, 0.005 * meanSquare);
}

} // namespace
} // namespace zn::test
