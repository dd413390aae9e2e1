#include "fingerprint/band_powers.h"

#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

using testing::ElementsAre;
using testing::FloatEq;

// Frequencies of a transform of 256 points: 129 columns.
Series grid(float samplingFrequency) {
    Series frequencies;
    for (int k = 0; k <= 128; ++k) frequencies.push_back(static_cast<float>(k) * samplingFrequency / 256);
    return frequencies;
}

Series fractions(const Series& power, const Series& frequencies, float samplingFrequency) {
    OffsetMatrix<float> bands(0, 0, 0, kBands - 1);
    bands.fill(-1); // to see what is not written
    bandPowerFractions(matrixOf({power}).get(), 1, static_cast<int>(frequencies.size()), frequencies.data(),
                       samplingFrequency, bands.get());
    return {bands[0], bands[0] + kBands};
}

// With a flat spectrum a band's value is its number of columns / 129. The inner edges lie at columns 4.096, 10.24, 25.6
// and 51.2 of the grid (0.032, 0.08, 0.2, 0.4 of 128), so bands end at columns 4, 10, 26 and 51.
testing::Matcher<float> columns(int count) {
    return FloatEq(static_cast<float>(count) / 129);
}

TEST(BandPowerFractions, OfAFlatSpectrumAreTheWidthsOfFiveBands) {
    EXPECT_THAT(fractions(Series(129, 2.0f), grid(0.5f), 0.5f),
                ElementsAre(columns(5), columns(6), columns(16), columns(25), columns(77)));
}

TEST(BandPowerFractions, RoundTheEdgesToTheNearestColumn) {
    Series power(129, 0.0f);
    power[4] = 1;
    power[5] = 2;
    power[26] = 4;
    power[27] = 8;
    power[51] = 16;
    power[52] = 33;
    EXPECT_THAT(fractions(power, grid(0.5f), 0.5f),
                ElementsAre(1.0f / 64, 2.0f / 64, 4.0f / 64, 24.0f / 64, 33.0f / 64));
}

TEST(BandPowerFractions, OfFiveSecondsAreFiveBands) {
    // The highest frequency is the float nearest to 0.1, which is above 0.1.
    EXPECT_THAT(fractions(Series(129, 1.0f), grid(0.2f), 0.2f),
                ElementsAre(columns(5), columns(6), columns(16), columns(25), columns(77)));
}

TEST(BandPowerFractions, OfSixToTenSecondsAreFourBands) {
    for (const float trSeconds : {6.0f, 8.0f, 10.0f}) {
        EXPECT_THAT(fractions(Series(129, 1.0f), grid(1 / trSeconds), 1 / trSeconds),
                    ElementsAre(columns(5), columns(6), columns(16), columns(102), -1));
    }
}

TEST(BandPowerFractions, OfLongerRepetitionTimesAreThreeBands) {
    EXPECT_THAT(fractions(Series(129, 1.0f), grid(1.0f / 12), 1.0f / 12),
                ElementsAre(columns(5), columns(6), columns(118), -1, -1));
}

TEST(BandPowerFractions, OfInfiniteFrequenciesAreAllInTheFirstBand) {
    Series frequencies(129, kInfinity);
    frequencies[0] = kNaN;
    EXPECT_THAT(fractions(Series(129, 1.0f), frequencies, kInfinity), ElementsAre(1, 0, 0, 0, 0));
}

TEST(BandPowerFractions, StayInRangeWhateverTheFrequencies) {
    EXPECT_THAT(fractions(Series(129, 1.0f), Series(129, kNaN), kNaN), ElementsAre(1, 0, 0, -1, -1));
    EXPECT_THAT(fractions(Series(129, 1.0f), grid(-0.5f), -0.5f), ElementsAre(columns(1), 0, columns(128), -1, -1));
    EXPECT_THAT(fractions({1.0f}, {0.0f}, 0.5f), ElementsAre(1, 0, 0, -1, -1));
}

TEST(BandPowerFractions, OfZeroPowerAreNaN) {
    EXPECT_TRUE(std::isnan(fractions(Series(129, 0.0f), grid(0.5f), 0.5f)[0]));
}

TEST(ScaleBandsToUnitRange, DividesByRowMaximaInPlaceAndThenByColumnMaxima) {
    const OffsetMatrix<float> bands = matrixOf({{1, 2, 4, 0, 0}, {8, 4, 2, 0, 1}});
    const OffsetMatrix<float> output(0, 1, 0, 4);
    scaleBandsToUnitRange(bands.get(), 2, output.get());
    EXPECT_THAT(Series(bands[0], bands[0] + 5), ElementsAre(0.25f, 0.5f, 1, 0, 0));
    EXPECT_THAT(Series(bands[1], bands[1] + 5), ElementsAre(1, 0.5f, 0.25f, 0, 0.125f));
    const auto isNaN = testing::Truly([](float value) { return std::isnan(value); });
    EXPECT_THAT(Series(output[0], output[0] + 5), ElementsAre(0.25f, 1, 1, isNaN, 0));
    EXPECT_THAT(Series(output[1], output[1] + 5), ElementsAre(1, 1, 0.25f, isNaN, 1));
}

TEST(ScaleBandsToUnitRange, FollowsTheComparisonsWithNaNs) {
    // A row of NaNs does not affect the other rows' columns unless it is the first; then it spreads.
    const OffsetMatrix<float> output(0, 1, 0, 4);
    scaleBandsToUnitRange(matrixOf({{1, 1, 1, 1, 1}, Series(5, kNaN)}).get(), 2, output.get());
    EXPECT_EQ(output[0][2], 1.0f);
    EXPECT_TRUE(std::isnan(output[1][2]));
    scaleBandsToUnitRange(matrixOf({Series(5, kNaN), {1, 1, 1, 1, 1}}).get(), 2, output.get());
    EXPECT_TRUE(std::isnan(output[1][2]));
}

} // namespace
} // namespace zn::test
