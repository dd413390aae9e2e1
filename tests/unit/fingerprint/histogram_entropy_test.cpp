#include "fingerprint/histogram_entropy.h"

#include "unit/fingerprint/test_series.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

using testing::ElementsAre;

Series histogramOf(const Series& row, int nbins) {
    OffsetMatrix<float> histogram(0, 0, 0, nbins - 1);
    histogram.fill(-1);
    computeHistograms(matrixOf({row}).get(), 1, static_cast<int>(row.size()), nbins, histogram.get());
    return {histogram[0], histogram[0] + nbins};
}

float entropyOf(const Series& frequencies) {
    float entropy = -1;
    histogramEntropy(matrixOf({frequencies}).get(), 1, static_cast<int>(frequencies.size()), &entropy);
    return entropy;
}

TEST(Histograms, CountValuesUpToAndIncludingTheUpperEdge) {
    // Width 2, edges 2 and 4: the 2 belongs to the first bin.
    EXPECT_THAT(histogramOf({4, 2, 0, 3, 1}, 2), ElementsAre(0.6f, 0.4f));
}

TEST(Histograms, OfAConstantFillTheFirstBin) {
    EXPECT_THAT(histogramOf({5, 5, 5, 5}, 3), ElementsAre(1, 0, 0));
}

TEST(Histograms, MissTheLargestValueWhenTheEdgesAddUpToLess) {
    // numpy float32: adding 7 / 6 six times gives 6.9999995, so the 7 is in no bin.
    EXPECT_THAT(histogramOf({0, 1, 7, 0}, 6), ElementsAre(0.75f, 0, 0, 0, 0, 0));
}

TEST(Histograms, OfSeveralRowsAreComputedRowByRow) {
    const OffsetMatrix<float> histogram(0, 1, 0, 1);
    computeHistograms(matrixOf({{0, 1, 2, 2}, {8, 0, 0, 0}}).get(), 2, 4, 2, histogram.get());
    EXPECT_EQ(histogram[0][0], 0.5f);
    EXPECT_EQ(histogram[0][1], 0.5f);
    EXPECT_EQ(histogram[1][0], 0.75f);
    EXPECT_EQ(histogram[1][1], 0.25f);
}

TEST(Histograms, WithInfiniteEdgesCountEachValueAtMostOnce) {
    const Series bins = histogramOf({0, 1, kInfinity}, 2); // width and edges infinite
    EXPECT_THAT(bins, ElementsAre(1, 0));
}

TEST(Histograms, OfNaNsStayBetweenZeroAndOne) {
    Series row = noise(500, 4);
    row[3] = row[100] = kNaN;
    float sum = 0;
    for (const float frequency : histogramOf(row, 5)) {
        EXPECT_GE(frequency, 0.0f);
        sum += frequency;
    }
    EXPECT_LE(sum, 1.0f);
    EXPECT_THAT(histogramOf(Series(10, kNaN), 2), ElementsAre(0, 0));
}

TEST(HistogramEntropy, OfFourEqualBinsIsTwoBits) {
    EXPECT_FLOAT_EQ(entropyOf({0.25f, 0.25f, 0.25f, 0.25f}), 2.0f);
}

TEST(HistogramEntropy, SkipsEmptyBins) {
    EXPECT_FLOAT_EQ(entropyOf({0.5f, 0, 0.25f, 0, 0.25f}), 1.5f); // 0.5 * 1 + 2 * 0.25 * 2
}

TEST(HistogramEntropy, OfOneFullBinIsZero) {
    EXPECT_EQ(entropyOf({1, 0, 0}), 0.0f);
}

TEST(HistogramEntropy, WithoutBinsIsMinusZero) {
    float entropy = -1;
    const OffsetMatrix<float> none(0, 0, 0, -1);
    computeHistograms(matrixOf({Series(99, 1.0f)}).get(), 1, 99, 0, none.get());
    histogramEntropy(none.get(), 1, 0, &entropy);
    EXPECT_TRUE(same(entropy, -0.0f));
}

TEST(HistogramEntropy, OfASeriesAsInDoublePrecision) {
    // numpy: p = np.histogram-like counts of testSeries(400, 0.2) in 40 bins / 400; -(p * np.log2(p)).sum()
    EXPECT_NEAR(entropyOf(histogramOf(testSeries(400, 0.2), 40)), 5.062904531979285, 1e-5);
}

} // namespace
} // namespace zn::test
