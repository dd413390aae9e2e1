#include "fingerprint/fingerprint.h"

#include "unit/fingerprint/test_series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zn::test {
namespace {

std::vector<const OffsetVector<float>*> vectorsOf(const Fingerprint& f) {
    return {&f.designCorrelation, &f.designIndex,     &f.rms,      &f.templateCorrelation, &f.templateIndex,
            &f.clustering,        &f.skewness,        &f.kurtosis, &f.spatialEntropy,      &f.autocorrelation,
            &f.temporalEntropy,   &f.scaledClustering};
}

TEST(Fingerprint, StartsWithZeros) {
    const Fingerprint fingerprint(3);
    for (const auto* vector : vectorsOf(fingerprint)) {
        for (int i = 0; i < 3; ++i) EXPECT_EQ((*vector)[i], 0.0f);
    }
    for (int i = 0; i < 3; ++i) {
        for (int b = 0; b < 5; ++b) EXPECT_EQ(fingerprint.bands[i][b], 0.0f);
    }
}

TEST(Fingerprint, RescalesTheSpatialFeatures) {
    // Three maps of 300 voxels. numpy, with the formulas of rowKurtosis, rowSkewness and a histogram of 3 bins in
    // double precision, then the rescalings.
    Fingerprint fingerprint(3);
    const OffsetMatrix<float> maps = matrixOf({testSeries(300, 0.2), testSeries(300, 0.9), testSeries(300, 1.7)});
    for (int i = 0; i < 3; ++i) {
        for (int v = 0; v < 300; ++v) maps[i][v] = std::exp(maps[i][v] * (1.0f + 0.5f * static_cast<float>(i)));
    }
    computeSpatialFeatures(maps.get(), 3, 300, fingerprint);
    const double kurtosis[] = {0, 0.795802036, 1};
    const double skewness[] = {0, 0.703363693, 1};
    const double entropy[] = {0, 1, 0.852354873};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(fingerprint.kurtosis[i], kurtosis[i], 1e-4) << i;
        EXPECT_NEAR(fingerprint.skewness[i], skewness[i], 1e-4) << i;
        EXPECT_NEAR(fingerprint.spatialEntropy[i], entropy[i], 1e-4) << i;
    }
}

TEST(Fingerprint, RescalesTheTemporalFeatures) {
    // Three courses of 400 volumes, 2.5 s apart, which counts as 2 s. numpy, with the formulas of the separate
    // features.
    Fingerprint fingerprint(3);
    const std::vector<Series> courses = {testSeries(400, 0.2), testSeries(400, 0.9), testSeries(400, 1.7)};
    computeTemporalFeatures(matrixWithColumns(courses).get(), matrixOf(courses).get(), 3, 400, 2500, fingerprint);
    const double lag[] = {0.921836228, 0.869438206, 0.860146821};
    const double entropy[] = {1, 0, 0.330590475};
    const double bands[3][5] = {{1, 1, 0.998955559, 1, 0.998792621},
                                {1, 0.985371569, 0.999474371, 0.843027416, 0.999445991},
                                {1, 0.964208338, 1, 0.735175516, 1}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(fingerprint.autocorrelation[i], lag[i], 1e-4) << i;
        EXPECT_NEAR(fingerprint.temporalEntropy[i], entropy[i], 1e-4) << i;
        for (int b = 0; b < 5; ++b) EXPECT_NEAR(fingerprint.bands[i][b], bands[i][b], 1e-3) << i << " band " << b;
    }
}

TEST(Fingerprint, KeepsTheDegreeOfClusteringBesideTheScaledOne) {
    Fingerprint fingerprint(2);
    OffsetMatrix<int> coordinates(0, 3, 0, 2);
    coordinates.fill(0);
    for (int v = 0; v < 4; ++v) coordinates[v][0] = v;
    const OffsetMatrix<float> maps = matrixOf({{3, 3, 0, 3}, {3, 0, 3, 0}});
    computeClustering(maps.get(), coordinates.get(), 2, 4, 2.5f, 2, fingerprint);
    EXPECT_FLOAT_EQ(fingerprint.clustering[0], 2.0f / 3);
    EXPECT_EQ(fingerprint.clustering[1], 0.0f);
    EXPECT_EQ(fingerprint.scaledClustering[0], 1.0f);
    EXPECT_EQ(fingerprint.scaledClustering[1], 0.0f);
}

TEST(Fingerprint, MatchesDesignAndTemplates) {
    Fingerprint fingerprint(1);
    const OffsetMatrix<float> courses = matrixWithColumns({{0, 1, 0, 1, 1, 0}});
    OffsetMatrix<float> design(0, 5, 0, 15);
    design.fill(0);
    for (int t = 0; t < 6; ++t) design[t][4] = courses[t][0];
    computeDesignMatch(design.get(), courses.get(), 6, 1, fingerprint);
    EXPECT_FLOAT_EQ(fingerprint.designCorrelation[0], 1.0f);
    EXPECT_EQ(fingerprint.designIndex[0], 5.0f);
    EXPECT_FLOAT_EQ(fingerprint.rms[0], static_cast<float>(std::sqrt(0.3))); // 6 * 0.25 / 5

    const OffsetMatrix<float> maps = matrixOf({{9, 9, 1}});
    computeTemplateMatch(maps.get(), matrixOf({{0, 1, 0}, {1, 1, 0}}).get(), 2, 3, 1, fingerprint);
    EXPECT_FLOAT_EQ(fingerprint.templateCorrelation[0], 1.0f);
    EXPECT_EQ(fingerprint.templateIndex[0], 2.0f);
}

} // namespace
} // namespace zn::test
