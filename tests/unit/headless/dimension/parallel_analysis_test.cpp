#include "headless/dimension/parallel_analysis.h"

#include "headless/blas/one_blas_thread.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace zn::test {

using namespace headless;

namespace {

constexpr int kVolumes = 48;

std::size_t at(int s, int t) {
    return static_cast<std::size_t>(s * kVolumes + t);
}

// The expected covariances of noise with unit variance, a given autocorrelation, and a correlation of neighbours that
// belongs to a width of 2, 3 and 4 voxels.
template <class Correlation> SeriesCovariances noiseWith(Correlation correlationAt) {
    SeriesCovariances result;
    result.volumes = kVolumes;
    result.voxels = 1'000'000'000; // so many that the eigenvalues do not scatter
    result.total.resize(at(kVolumes, 0));
    for (int s = 0; s < kVolumes; ++s) {
        for (int t = 0; t < kVolumes; ++t) result.total[at(s, t)] = correlationAt(std::abs(s - t));
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double width = 2.0 + static_cast<double>(axis);
        const double correlation = std::exp(-2.0 * std::numbers::ln2 / (width * width));
        for (const double value : result.total) result.differences[axis].push_back((1.0 - correlation) * value);
    }
    return result;
}

SeriesCovariances noiseOnly(double memory) {
    return noiseWith([memory](int lag) { return std::pow(memory, lag); });
}

// Components without differences, with the cosines of 1, 2, ... half periods as time courses.
void addComponents(SeriesCovariances& covariances, const std::vector<double>& variances) {
    for (int s = 0; s < kVolumes; ++s) {
        for (int t = 0; t < kVolumes; ++t) {
            for (std::size_t c = 0; c < variances.size(); ++c) {
                const double step = std::numbers::pi * static_cast<double>(c + 1) / kVolumes;
                covariances.total[at(s, t)] +=
                    variances[c] * 2.0 / kVolumes * std::cos(step * (s + 0.5)) * std::cos(step * (t + 0.5));
            }
        }
    }
}

class Parallel : public testing::Test {
protected:
    ResidualNoise noiseOf(const SeriesCovariances& covariances) { return {covariances, products_}; }

private:
    OneBlasThread oneThread_;
    MatrixProducts products_{2};
};

TEST_F(Parallel, RecoversTheSmoothnessAndTheAutocorrelationOfNoise) {
    const NoiseModel model = noiseOf(noiseOnly(0.6)).after(0);
    EXPECT_NEAR(model.fwhm[0], 2.0, 1e-9);
    EXPECT_NEAR(model.fwhm[1], 3.0, 1e-9);
    EXPECT_NEAR(model.fwhm[2], 4.0, 1e-9);
    EXPECT_NEAR(model.correlation, 0.6, 1e-9);
}

TEST_F(Parallel, DirectionsThatAreTakenAwayDoNotBiasTheAutocorrelation) {
    // A moving average of two volumes, so that the correlation ends before the longest lag of the model.
    const auto noise = noiseWith([](int lag) { return lag == 0 ? 1.0 : lag == 1 ? 0.4 : 0.0; });
    EXPECT_NEAR(noiseOf(noise).after(9).correlation, 0.4, 1e-9);
}

TEST_F(Parallel, TheEdgeOfNoiseIsItsLargestEigenvalue) {
    const SeriesCovariances covariances = noiseOnly(0.6);
    const ResidualNoise noise = noiseOf(covariances);
    // Beyond it by the scatter of a billion voxels of which few are independent.
    EXPECT_NEAR(noise.after(0).edge, noise.eigenvalues()[0], 0.01 * noise.eigenvalues()[0]);
    EXPECT_GE(noise.after(0).edge, noise.eigenvalues()[0]);
}

TEST_F(Parallel, FindsNothingButTheFirstDirectionInNoise) {
    for (const double memory : {0.0, 0.3, 0.6}) {
        EXPECT_EQ(parallelAnalysis(noiseOf(noiseOnly(memory))).count, 1) << memory;
    }
}

TEST_F(Parallel, CountsTheComponentsAboveTheNoise) {
    SeriesCovariances covariances = noiseOnly(0.3);
    addComponents(covariances, {5000.0, 300.0, 60.0, 20.0, 10.0, 5.0, 2.0});
    const ParallelAnalysis result = parallelAnalysis(noiseOf(covariances));
    EXPECT_EQ(result.count, 7);
    EXPECT_TRUE(result.hasEdge);
    EXPECT_NEAR(result.noise.correlation, 0.3, 0.02);
}

TEST_F(Parallel, AStrongComponentDoesNotHideWeakerOnes) {
    SeriesCovariances covariances = noiseOnly(0.0);
    covariances.voxels = 3000;
    addComponents(covariances, {5000.0, 3000.0, 50.0});
    const ResidualNoise noise = noiseOf(covariances);
    ASSERT_GT(noise.after(1).edge, noise.eigenvalues()[1]); // as long as the second one is taken for noise
    EXPECT_EQ(parallelAnalysis(noise).count, 3);
}

TEST_F(Parallel, EigenvaluesThatDescendWithoutAnEdgeAreReported) {
    SeriesCovariances covariances = noiseOnly(0.0);
    std::vector<double> variances;
    for (int c = 1; c < kVolumes; ++c) variances.push_back(2000.0 / std::pow(c, 2.0));
    addComponents(covariances, variances);
    const ParallelAnalysis result = parallelAnalysis(noiseOf(covariances));
    EXPECT_FALSE(result.hasEdge);
    EXPECT_EQ(result.count, kVolumes / 3);
}

TEST_F(Parallel, ManyComponentsWithoutAnEdgeDoNotHideOneAnother) {
    SeriesCovariances covariances = noiseOnly(0.0);
    covariances.voxels = 30000;
    std::vector<double> variances = {5000.0};
    for (int c = 0; c < 19; ++c) variances.push_back(20.0 * std::pow(0.9, c)); // the last one is 3.0
    addComponents(covariances, variances);
    const ResidualNoise noise = noiseOf(covariances);
    ASSERT_GT(1.5 * noise.after(3).edge, noise.eigenvalues()[3]); // so that three of them seem to be enough
    const ParallelAnalysis result = parallelAnalysis(noise);
    EXPECT_FALSE(result.hasEdge);
    EXPECT_EQ(result.count, kVolumes / 3);
}

TEST_F(Parallel, IsTheSameBitsForEveryNumberOfThreads) {
    SeriesCovariances covariances = noiseOnly(0.3);
    addComponents(covariances, {5000.0, 300.0, 60.0});
    const double edge = noiseOf(covariances).after(3).edge;
    for (const int threads : {1, 3}) {
        MatrixProducts products(threads);
        EXPECT_EQ(ResidualNoise(covariances, products).after(3).edge, edge) << threads;
    }
}

TEST_F(Parallel, ManagesWithFewVolumesAndWithoutNeighbours) {
    for (const int volumes : {1, 2, 3, 5, 6, 8}) {
        SeriesCovariances covariances;
        covariances.volumes = volumes;
        covariances.voxels = 100;
        for (int i = 0; i < volumes * volumes; ++i) covariances.total.push_back(i % (volumes + 1) == 0 ? 1.0 + i : 0.1);
        EXPECT_GE(parallelAnalysis(noiseOf(covariances)).count, 1) << volumes;
        EXPECT_LE(parallelAnalysis(noiseOf(covariances)).count, std::max(1, volumes / 3)) << volumes;
    }
}

} // namespace
} // namespace zn::test
