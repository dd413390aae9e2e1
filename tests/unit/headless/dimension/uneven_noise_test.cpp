// Noise that is stronger in some voxels than in others.
#include "headless/blas/one_blas_thread.h"
#include "headless/dimension/component_estimate.h"
#include "headless/simulate/random_numbers.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {

using namespace headless;

namespace {

constexpr std::array<int, 3> kUnevenSize = {14, 12, 12};
constexpr int kUnevenVolumes = 48;
constexpr std::int64_t kVoxels = 14 * 12 * 12;

// White noise whose standard deviation scatters by a factor of two from voxel to voxel, and components in a twelfth of
// the voxels each, with one value in a volume for all of them.
TimeSeries unevenNoiseWith(std::size_t components) {
    RandomNumbers random(4);
    TimeSeries series;
    series.voxels = kVoxels;
    series.volumes = kUnevenVolumes;
    series.floats = std::make_unique<float[]>(static_cast<std::size_t>(kVoxels) * kUnevenVolumes);
    for (std::size_t v = 0; v < kVoxels; ++v) {
        const double strength = std::exp(0.7 * random.normal());
        for (std::size_t t = 0; t < kUnevenVolumes; ++t) {
            series.floats[v * kUnevenVolumes + t] = static_cast<float>(strength * random.normal());
        }
    }
    for (std::size_t c = 0; c < components; ++c) {
        for (std::size_t t = 0; t < kUnevenVolumes; ++t) {
            const auto value = static_cast<float>(3.0 * random.normal());
            for (std::size_t v = c * kVoxels / 12; v < (c + 1) * kVoxels / 12; ++v) {
                series.floats[v * kUnevenVolumes + t] += value;
            }
        }
    }
    return series;
}

class UnevenNoise : public testing::Test {
protected:
    SeriesCovariances covariancesOf(const TimeSeries& series, const Directions& leading) {
        return seriesCovariances(series, kUnevenSize, mask_, products_.team(), leading);
    }
    int estimateFor(const TimeSeries& series) {
        return estimateComponents([&](const Directions& leading) { return covariancesOf(series, leading); }, products_)
            .chosen();
    }

    OneBlasThread oneThread_;
    MatrixProducts products_{2};
    std::vector<unsigned char> mask_ = std::vector<unsigned char>(kVoxels, 1);
};

TEST_F(UnevenNoise, YieldsNoComponents) {
    const TimeSeries series = unevenNoiseWith(0);
    ASSERT_GT(parallelAnalysis({covariancesOf(series, {}), products_}).count, 3); // as if it were even
    EXPECT_EQ(estimateFor(series), 1);
}

TEST_F(UnevenNoise, DoesNotAddToTheComponents) {
    for (const std::size_t components : {2U, 5U, 9U}) {
        EXPECT_EQ(estimateFor(unevenNoiseWith(components)), static_cast<int>(components));
    }
}

TEST_F(UnevenNoise, LeavesTheEigenvaluesThoseOfTheData) {
    const TimeSeries series = unevenNoiseWith(3);
    const SeriesCovariances plain = covariancesOf(series, {});
    const auto estimate =
        estimateComponents([&](const Directions& leading) { return covariancesOf(series, leading); }, products_);
    double trace = 0.0;
    for (std::size_t t = 0; t < kUnevenVolumes; ++t) trace += plain.total[t * (kUnevenVolumes + 1)];
    double sum = 0.0;
    for (const double value : estimate.eigenvalues) sum += value;
    EXPECT_NEAR(sum, trace, 1e-9 * trace);
}

} // namespace
} // namespace zn::test
