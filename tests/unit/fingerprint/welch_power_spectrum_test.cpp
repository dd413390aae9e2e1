#include "fingerprint/welch_power_spectrum.h"

#include "fingerprint/spectral_setup.h"
#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <utility>

namespace zn::test {
namespace {

struct Spectrum {
    std::vector<Series> power;
    Series frequencies;
};

Spectrum spectrumOf(const std::vector<Series>& courses, int trMs = 2000) {
    const auto k = static_cast<int>(courses.size());
    const auto t = static_cast<int>(courses.front().size());
    const SpectralSetup setup = spectralSetup(t, trMs);
    const int f = setup.frequencyCount;
    OffsetMatrix<float> power(0, k - 1, 0, f - 1);
    power.fill(-1);
    Spectrum result{{}, Series(static_cast<std::size_t>(f))};
    welchPowerSpectrum(matrixOf(courses).get(), k, t, setup.transformLength, setup.segmentLength, setup.overlap,
                       power.get(), result.frequencies.data(), setup.samplingFrequency);
    for (int i = 0; i < k; ++i) result.power.emplace_back(power[i], power[i] + f);
    return result;
}

using Column = std::pair<std::size_t, double>;

// numpy, for testSeries(t, 0.2): z = (x - x.mean()) / x.std(ddof=1); w = np.hamming(L); the mean over the segments of
// abs(np.fft.rfft(segment * w, wrapped modulo nfft or padded with zeros))**2 / (w**2).sum()
void expectColumns(int t, const std::vector<Column>& columns, double total) {
    const Series power = spectrumOf({testSeries(t, 0.2)}).power[0];
    for (const auto& [k, expected] : columns) EXPECT_NEAR(power[k], expected, 1e-4 * expected + 1e-6) << k;
    EXPECT_NEAR(std::accumulate(power.begin(), power.end(), 0.0), total, 1e-5 * total);
}

TEST(WelchPowerSpectrum, OfSegmentsPaddedWithZeros) {
    expectColumns(
        400, {{0, 33.27379}, {1, 27.76676}, {15, 8.169944}, {16, 6.987535}, {53, 0.0003020796}, {128, 3.385947e-05}},
        125.06243780568025);
}

TEST(WelchPowerSpectrum, OfSegmentsWrappedAroundTheTransform) {
    expectColumns(
        1350, {{0, 163.9415}, {1, 16.28405}, {15, 3.427645}, {16, 0.4595478}, {53, 4.100111e-05}, {128, 1.086901e-05}},
        185.36103994117408);
}

TEST(WelchPowerSpectrum, OfALongerTransform) {
    expectColumns(
        1800,
        {{0, 223.0215}, {1, 84.38836}, {15, 0.002392669}, {16, 0.002944136}, {53, 0.0003001772}, {256, 7.634394e-06}},
        315.68587066665953);
}

TEST(WelchPowerSpectrum, DoesNotUseVolumesAfterTheLastWholeSegment) {
    // 403 volumes: segments of 89 every 45 volumes, (403 - 44) / 45 = 7 of them, the last ends at volume 359. Swapping
    // later volumes keeps mean and standard deviation, except for rounding.
    Series course = testSeries(403, 0.2);
    const Series before = spectrumOf({course}).power[0];
    std::swap(course[360], course[402]);
    const Series after = spectrumOf({course}).power[0];
    for (std::size_t k = 0; k < before.size(); ++k) EXPECT_NEAR(before[k], after[k], 1e-4 * before[k] + 1e-6) << k;
}

TEST(WelchPowerSpectrum, FrequenciesReachFromZeroToNyquist) {
    const Series frequencies = spectrumOf({testSeries(400, 0.2)}).frequencies;
    ASSERT_EQ(frequencies.size(), 129U);
    EXPECT_EQ(frequencies[0], 0.0f);
    EXPECT_FLOAT_EQ(frequencies[1], 0.5f / 256);
    EXPECT_FLOAT_EQ(frequencies[77], 77 * 0.5f / 256);
    EXPECT_EQ(frequencies[128], 0.25f);
}

TEST(WelchPowerSpectrum, OfFiveSecondsEndsAtTheFloatNearestToATenth) {
    EXPECT_EQ(spectrumOf({testSeries(400, 0.2)}, 5000).frequencies.back(), 0.1f);
    EXPECT_EQ(spectrumOf({testSeries(1800, 0.2)}, 5000).frequencies.back(), 0.1f);
}

TEST(WelchPowerSpectrum, BelowOneSecondHasInfiniteFrequenciesButTheFirst) {
    const Series frequencies = spectrumOf({testSeries(400, 0.2)}, 500).frequencies;
    EXPECT_TRUE(std::isnan(frequencies[0]));
    for (std::size_t k = 1; k < frequencies.size(); ++k) EXPECT_EQ(frequencies[k], kInfinity) << k;
}

TEST(WelchPowerSpectrum, WithoutOneWholeSegmentIsNaN) {
    for (int t = 1; t <= 8; ++t) { // up to 4 volumes no segment, up to 8 a window of one value
        const Series power = spectrumOf({testSeries(t, 0.2)}).power[0];
        for (const float value : power) EXPECT_TRUE(std::isnan(value)) << t;
    }
}

TEST(WelchPowerSpectrum, OfNineVolumesIsFinite) {
    const Series power = spectrumOf({testSeries(9, 0.2)}).power[0];
    for (const float value : power) EXPECT_TRUE(std::isfinite(value));
}

TEST(WelchPowerSpectrum, OfAConstantIsNaNForThatComponentOnly) {
    const auto power = spectrumOf({Series(100, 2.0f), testSeries(100, 0.2), Series(100, kNaN)}).power;
    EXPECT_TRUE(std::isnan(power[0][3]));
    EXPECT_TRUE(std::isfinite(power[1][3]));
    EXPECT_TRUE(std::isnan(power[2][3]));
}

} // namespace
} // namespace zn::test
