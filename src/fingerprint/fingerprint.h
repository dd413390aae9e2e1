#pragma once

#include "numeric/array_owners.h"

namespace zn {

/// Columns of the design matrix; those without a predictor are 0, and further predictors are not used.
inline constexpr int kPredictors = 16;

/// The fingerprint of every component of a run: sixteen values each, in the order of the map parameters, and the scaled
/// degree of clustering for the parameter file. Everything is 0 until its stage has run.
struct Fingerprint {
    Fingerprint() = default; ///< of no components
    explicit Fingerprint(int components);

    // Vectors [0..components-1].
    OffsetVector<float> designCorrelation;   ///< |correlation| with the best predictor
    OffsetVector<float> designIndex;         ///< number of that predictor, from 1
    OffsetVector<float> rms;                 ///< sample standard deviation of the time course in 0 .. 1
    OffsetVector<float> templateCorrelation; ///< |correlation| with the best region of interest
    OffsetVector<float> templateIndex;       ///< number of that region, from 1; 0 when none
    OffsetVector<float> clustering;          ///< degree of clustering
    OffsetVector<float> skewness;
    OffsetVector<float> kurtosis;
    OffsetVector<float> spatialEntropy;
    OffsetVector<float> autocorrelation; ///< |lag-1 autocorrelation|
    OffsetVector<float> temporalEntropy;
    OffsetMatrix<float> bands; ///< [0..components-1][0..4], share of the power in five frequency bands

    OffsetVector<float> scaledClustering; ///< degree of clustering divided by its largest value
};

// The stages, in the order of a run. Shapes: k components, v voxels, t volumes.

/// Skewness, kurtosis and spatial entropy from the component maps [0..k-1][0..v-1].
void computeSpatialFeatures(const float* const* maps, int k, int v, Fingerprint& fingerprint);

/// Autocorrelation from the time courses rescaled to 0 .. 1, [0..t-1][0..k-1]; temporal entropy and bands from the raw
/// ones, [0..k-1][0..t-1]. trMs is the repetition time in milliseconds.
void computeTemporalFeatures(const float* const* timeCourses, const float* const* rawTimeCourses, int k, int t,
                             int trMs, Fingerprint& fingerprint);

/// Degree of clustering, plain and scaled, from the maps and the voxels' grid positions [0..v-1][0..2].
void computeClustering(const float* const* maps, const int* const* coordinates, int k, int v, float zThreshold,
                       int minClusterSize, Fingerprint& fingerprint);

/// Best predictor and spread from the design matrix [0..t-1][0..kPredictors-1] and the rescaled time courses
/// [0..t-1][0..k-1].
void computeDesignMatch(const float* const* designMatrix, const float* const* timeCourses, int t, int k,
                        Fingerprint& fingerprint);

/// Best region of interest from the maps and m templates [0..m-1][0..v-1]; null templates match nothing.
void computeTemplateMatch(const float* const* maps, const float* const* templates, int m, int v, int k,
                          Fingerprint& fingerprint);

} // namespace zn
