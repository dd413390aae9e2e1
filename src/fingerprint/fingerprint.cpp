#include "fingerprint/fingerprint.h"

#include "fingerprint/band_powers.h"
#include "fingerprint/clustering_degree.h"
#include "fingerprint/histogram_entropy.h"
#include "fingerprint/lag_one_autocorrelation.h"
#include "fingerprint/match_design_matrix.h"
#include "fingerprint/match_templates.h"
#include "fingerprint/row_moments.h"
#include "fingerprint/spectral_setup.h"
#include "fingerprint/unit_range.h"
#include "fingerprint/welch_power_spectrum.h"

namespace zn {

namespace {

constexpr int kVoxelsPerBin = 100; // of the spatial histogram, on average
constexpr int kVolumesPerBin = 10; // of the temporal histogram

OffsetVector<float> zeros(int k) {
    OffsetVector<float> values(0, k - 1);
    values.fill(0);
    return values;
}

void rowEntropy(const float* const* rows, int k, int n, int nbins, float* entropy) {
    const OffsetMatrix<float> histogram(0, k - 1, 0, nbins - 1);
    computeHistograms(rows, k, n, nbins, histogram.get());
    histogramEntropy(histogram.get(), k, nbins, entropy);
}

void computeBands(const float* const* courses, int k, int t, int trMs, float** output) {
    const SpectralSetup setup = spectralSetup(t, trMs);
    const OffsetMatrix<float> spectrum(0, k - 1, 0, setup.frequencyCount - 1);
    const OffsetVector<float> frequencies(0, setup.frequencyCount - 1);
    welchPowerSpectrum(courses, k, t, setup.transformLength, setup.segmentLength, setup.overlap, spectrum.get(),
                       frequencies.get(), setup.samplingFrequency);

    OffsetMatrix<float> fractions(0, k - 1, 0, kBands - 1);
    fractions.fill(0); // with a long repetition time the last bands are not written
    bandPowerFractions(spectrum.get(), k, setup.frequencyCount, frequencies.get(), setup.samplingFrequency,
                       fractions.get());
    scaleBandsToUnitRange(fractions.get(), k, output);
}

} // namespace

Fingerprint::Fingerprint(int components)
    : designCorrelation(zeros(components)), designIndex(zeros(components)), rms(zeros(components)),
      templateCorrelation(zeros(components)), templateIndex(zeros(components)), clustering(zeros(components)),
      skewness(zeros(components)), kurtosis(zeros(components)), spatialEntropy(zeros(components)),
      autocorrelation(zeros(components)), temporalEntropy(zeros(components)), bands(0, components - 1, 0, kBands - 1),
      scaledClustering(zeros(components)) {
    bands.fill(0);
}

void computeSpatialFeatures(const float* const* maps, int k, int v, Fingerprint& fingerprint) {
    rowEntropy(maps, k, v, v / kVoxelsPerBin, fingerprint.spatialEntropy.get());
    rowKurtosis(maps, k, v, fingerprint.kurtosis.get());
    rowSkewness(maps, k, v, fingerprint.skewness.get());
    logMagnitudeUnitRange(fingerprint.kurtosis.get(), k, fingerprint.kurtosis.get());
    logMagnitudeUnitRange(fingerprint.spatialEntropy.get(), k, fingerprint.spatialEntropy.get());
    logRatioUnitRange(fingerprint.skewness.get(), k, fingerprint.skewness.get());
}

void computeTemporalFeatures(const float* const* timeCourses, const float* const* rawTimeCourses, int k, int t,
                             int trMs, Fingerprint& fingerprint) {
    const OffsetVector<float> withSign(0, k - 1); // not part of the fingerprint
    lagOneAutocorrelation(timeCourses, t, k, withSign.get(), fingerprint.autocorrelation.get());
    rowEntropy(rawTimeCourses, k, t, t / kVolumesPerBin, fingerprint.temporalEntropy.get());
    expUnitRange(fingerprint.temporalEntropy.get(), k, fingerprint.temporalEntropy.get());
    computeBands(rawTimeCourses, k, t, trMs, fingerprint.bands.get());
}

void computeClustering(const float* const* maps, const int* const* coordinates, int k, int v, float zThreshold,
                       int minClusterSize, Fingerprint& fingerprint) {
    clusteringDegree(maps, coordinates, k, v, zThreshold, minClusterSize, fingerprint.clustering.get());
    scaleToLargest(fingerprint.clustering.get(), k, fingerprint.scaledClustering.get());
}

void computeDesignMatch(const float* const* designMatrix, const float* const* timeCourses, int t, int k,
                        Fingerprint& fingerprint) {
    matchDesignMatrix(designMatrix, timeCourses, kPredictors, t, k, fingerprint.designCorrelation.get(),
                      fingerprint.designIndex.get(), fingerprint.rms.get());
}

void computeTemplateMatch(const float* const* maps, const float* const* templates, int m, int v, int k,
                          Fingerprint& fingerprint) {
    matchTemplates(maps, templates, templates ? m : 0, v, k, fingerprint.templateCorrelation.get(),
                   fingerprint.templateIndex.get());
}

} // namespace zn
