// Input that has no sensible fingerprint: the values are NaN, and nothing fails. AddressSanitizer and
// UndefinedBehaviourSanitizer check every path through the stages.
#include "fingerprint/fingerprint.h"
#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zn::test {
namespace {

struct Results {
    std::vector<Series> maps;    // k series of v voxels
    std::vector<Series> courses; // k series of t volumes
    int trMs = 2000;
};

Results noisyResults(int k, int v, int t) {
    Results results;
    for (int i = 0; i < k; ++i) {
        results.maps.push_back(noise(v, static_cast<unsigned>(10 + i)));
        results.courses.push_back(noise(t, static_cast<unsigned>(50 + i)));
    }
    return results;
}

Fingerprint fingerprintOf(const Results& results) {
    const auto k = static_cast<int>(results.maps.size());
    const auto v = static_cast<int>(results.maps.front().size());
    const auto t = static_cast<int>(results.courses.front().size());
    const OffsetMatrix<float> maps = matrixOf(results.maps);
    const OffsetMatrix<float> raw = matrixOf(results.courses);
    const OffsetMatrix<float> rescaled = matrixWithColumns(results.courses);
    OffsetMatrix<int> coordinates(0, v - 1, 0, 2);
    for (int i = 0; i < v; ++i) {
        coordinates[i][0] = i % 5;
        coordinates[i][1] = i / 5 % 5;
        coordinates[i][2] = i / 25;
    }
    OffsetMatrix<float> design(0, t - 1, 0, 15);
    design.fill(0);

    Fingerprint fingerprint(k);
    computeSpatialFeatures(maps.get(), k, v, fingerprint);
    computeTemporalFeatures(rescaled.get(), raw.get(), k, t, results.trMs, fingerprint);
    computeClustering(maps.get(), coordinates.get(), k, v, 1.0f, 2, fingerprint);
    computeDesignMatch(design.get(), rescaled.get(), t, k, fingerprint);
    computeTemplateMatch(maps.get(), nullptr, 3, v, k, fingerprint);
    return fingerprint;
}

bool allNaN(const OffsetVector<float>& vector) {
    for (int i = vector.low(); i <= vector.high(); ++i) {
        if (!std::isnan(vector[i])) return false;
    }
    return true;
}

bool allNaN(const float* bands) {
    for (int b = 0; b < 5; ++b) {
        if (!std::isnan(bands[b])) return false;
    }
    return true;
}

TEST(DegenerateFingerprint, OfFewerThanAHundredVoxelsHasNoSpatialEntropy) {
    const Fingerprint fingerprint = fingerprintOf(noisyResults(3, 99, 100));
    EXPECT_TRUE(allNaN(fingerprint.spatialEntropy));
    EXPECT_FALSE(allNaN(fingerprint.temporalEntropy));
}

TEST(DegenerateFingerprint, OfFewerThanTenVolumesHasNoTemporalEntropy) {
    const Fingerprint fingerprint = fingerprintOf(noisyResults(3, 300, 9));
    EXPECT_TRUE(allNaN(fingerprint.temporalEntropy));
    EXPECT_TRUE(std::isfinite(fingerprint.bands[0][4]));
    EXPECT_TRUE(std::isfinite(fingerprint.autocorrelation[0]));
}

TEST(DegenerateFingerprint, OfTooFewVolumesForASegmentHasNoBands) {
    for (int t = 1; t <= 8; ++t) {
        const Fingerprint fingerprint = fingerprintOf(noisyResults(2, 120, t));
        EXPECT_TRUE(allNaN(fingerprint.bands[0])) << t;
        EXPECT_TRUE(allNaN(fingerprint.bands[1])) << t;
    }
}

TEST(DegenerateFingerprint, OfOneVoxelAndOneVolumeIsMostlyNaN) {
    const Fingerprint fingerprint = fingerprintOf(noisyResults(2, 1, 1));
    EXPECT_TRUE(allNaN(fingerprint.skewness));
    EXPECT_TRUE(allNaN(fingerprint.kurtosis)); // the logarithm of -3
    EXPECT_TRUE(allNaN(fingerprint.autocorrelation));
    EXPECT_TRUE(allNaN(fingerprint.rms));
}

TEST(DegenerateFingerprint, OfAConstantFirstMapSpreadsToAll) {
    Results results = noisyResults(3, 300, 100);
    results.maps[0] = Series(300, 0.0f);
    const Fingerprint fingerprint = fingerprintOf(results);
    EXPECT_TRUE(allNaN(fingerprint.skewness));
    EXPECT_TRUE(allNaN(fingerprint.kurtosis));
    EXPECT_TRUE(allNaN(fingerprint.scaledClustering));
    EXPECT_TRUE(std::isfinite(fingerprint.clustering[1]));
}

TEST(DegenerateFingerprint, OfConstantTimeCoursesHasNoSpectrum) {
    Results results = noisyResults(2, 300, 100);
    results.courses = {Series(100, 1.0f), Series(100, 1.0f)};
    const Fingerprint fingerprint = fingerprintOf(results);
    EXPECT_TRUE(allNaN(fingerprint.autocorrelation));
    EXPECT_TRUE(allNaN(fingerprint.temporalEntropy)); // both entropies are 0: 0 / 0
    EXPECT_TRUE(allNaN(fingerprint.bands[0]));
    EXPECT_EQ(fingerprint.rms[1], 0.0f);
}

TEST(DegenerateFingerprint, OfMapsAndCoursesThatAreNaN) {
    Results results = noisyResults(2, 300, 100);
    results.maps = {Series(300, kNaN), Series(300, kNaN)};
    results.courses = {Series(100, kNaN), Series(100, kNaN)};
    const Fingerprint fingerprint = fingerprintOf(results);
    EXPECT_TRUE(allNaN(fingerprint.skewness));
    EXPECT_TRUE(allNaN(fingerprint.kurtosis));
    EXPECT_TRUE(allNaN(fingerprint.spatialEntropy));
    EXPECT_TRUE(allNaN(fingerprint.clustering));
    EXPECT_TRUE(allNaN(fingerprint.autocorrelation));
    EXPECT_TRUE(allNaN(fingerprint.bands[1]));
    EXPECT_EQ(fingerprint.templateIndex[0], 0.0f);
    EXPECT_EQ(fingerprint.designIndex[0], 1.0f);
}

TEST(DegenerateFingerprint, OfInfiniteMapsDoesNotFail) {
    Results results = noisyResults(2, 300, 100);
    results.maps[0][7] = kInfinity;
    results.maps[1] = Series(300, -kInfinity);
    const Fingerprint fingerprint = fingerprintOf(results);
    EXPECT_TRUE(allNaN(fingerprint.skewness));
    EXPECT_EQ(fingerprint.clustering[1], 1.0f);
}

TEST(DegenerateFingerprint, OfASingleComponentCannotBeRescaled) {
    const Fingerprint fingerprint = fingerprintOf(noisyResults(1, 300, 100));
    EXPECT_TRUE(allNaN(fingerprint.skewness));
    EXPECT_TRUE(allNaN(fingerprint.kurtosis));
    EXPECT_TRUE(allNaN(fingerprint.spatialEntropy));
    EXPECT_TRUE(allNaN(fingerprint.temporalEntropy));
    EXPECT_EQ(fingerprint.bands[0][0], 1.0f);
    EXPECT_EQ(fingerprint.scaledClustering[0], 1.0f);
}

TEST(DegenerateFingerprint, BelowOneSecondPutsAllPowerIntoTheFirstBand) {
    for (const int trMs : {999, 0, -1}) {
        Results results = noisyResults(2, 300, 100);
        results.trMs = trMs;
        const Fingerprint fingerprint = fingerprintOf(results);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(fingerprint.bands[i][0], 1.0f);
            for (int b = 1; b < 5; ++b) EXPECT_TRUE(std::isnan(fingerprint.bands[i][b])) << trMs; // 0 / 0
        }
    }
}

TEST(DegenerateFingerprint, OfANegativeRepetitionTimeHasThreeBands) {
    Results results = noisyResults(2, 300, 100);
    results.trMs = -2000;
    const Fingerprint fingerprint = fingerprintOf(results);
    EXPECT_TRUE(std::isfinite(fingerprint.bands[0][0]));
    EXPECT_TRUE(std::isnan(fingerprint.bands[0][3]));
}

TEST(DegenerateFingerprint, OfALongSeriesWrapsItsSegments) {
    const Fingerprint fingerprint = fingerprintOf(noisyResults(2, 120, 1350));
    for (int b = 0; b < 5; ++b) EXPECT_TRUE(std::isfinite(fingerprint.bands[0][b])) << b;
}

} // namespace
} // namespace zn::test
