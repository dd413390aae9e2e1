// Checks the host's description of the frequency bands against the plug-in's own computation.
#include "headless/result/frequency_bands.h"

#include "fingerprint/band_powers.h"
#include "fingerprint/spectral_setup.h"
#include "fingerprint/welch_power_spectrum.h"
#include "numeric/array_owners.h"

#include <gtest/gtest.h>

namespace zn::test {

using namespace headless;

namespace {

// Number of bands that the plug-in fills for a repetition time: one wave, 100 volumes.
int bandsFilled(int milliseconds) {
    constexpr int kVolumes = 100;
    OffsetMatrix<float> course(0, 0, 0, kVolumes - 1);
    for (int t = 0; t < kVolumes; ++t) course[0][t] = static_cast<float>(t * t % 17);
    const SpectralSetup setup = spectralSetup(kVolumes, milliseconds);
    const OffsetMatrix<float> spectrum(0, 0, 0, setup.frequencyCount - 1);
    const OffsetVector<float> frequencies(0, setup.frequencyCount - 1);
    welchPowerSpectrum(course.get(), 1, kVolumes, setup.transformLength, setup.segmentLength, setup.overlap,
                       spectrum.get(), frequencies.get(), setup.samplingFrequency);
    OffsetMatrix<float> shares(0, 0, 0, kBands - 1);
    shares.fill(0.0f);
    bandPowerFractions(spectrum.get(), 1, setup.frequencyCount, frequencies.get(), setup.samplingFrequency,
                       shares.get());
    int filled = 0;
    for (int b = 0; b < kBands; ++b) filled += shares[0][b] > 0.0f ? 1 : 0;
    return filled;
}

TEST(FrequencyBands, AreAsManyAsThePluginFills) {
    for (int milliseconds = 100; milliseconds <= 20000; milliseconds += 100) {
        EXPECT_EQ(frequencyBands(milliseconds).used, bandsFilled(milliseconds)) << milliseconds;
    }
}

TEST(FrequencyBands, TheLastOneInUseTakesTheRestOfTheSpectrum) {
    EXPECT_EQ(frequencyBands(2000).range(3), "from 0.08 to 0.2 of the Nyquist frequency");
    EXPECT_EQ(frequencyBands(2000).range(5), "from 0.4 of the Nyquist frequency upwards");
    EXPECT_EQ(frequencyBands(6000).range(4), "from 0.2 of the Nyquist frequency upwards");
    EXPECT_EQ(frequencyBands(11000).range(3), "from 0.08 of the Nyquist frequency upwards");
}

} // namespace
} // namespace zn::test
