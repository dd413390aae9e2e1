#include "plugin/fingerprint_stage.h"

#include "host/host_api.h"
#include "output/text_matrix.h"

#include <algorithm>
#include <array>

namespace zn {

namespace {

constexpr int kSmallestCluster = 2; // voxels; a smaller answer means that the user cancelled

void askAndCluster(Run& run) {
    const int minClusterSize =
        host().znGetIntegerInput("Please enter a Cluster size threshold (cancel to skip):", 10, kSmallestCluster, 2000);
    if (minClusterSize < kSmallestCluster) {
        host().znMessageBox("You have chosen not to estimate the clustering function.\n"
                            "Component fingerprint will thus miss one parameter and may not be usable!");
        return;
    }
    const float zThreshold = host().znGetFloatInput("Z threshold for maps:", 2.5f, 0.1f, 100.0f);
    computeClustering(run.components.maps.get(), run.voxelData.coordinates.get(), run.components.count, run.vtc.voxels,
                      zThreshold, minClusterSize, run.fingerprint);
}

// [0..T-1][0..kPredictors-1]; columns that the host has no predictor for stay 0.
OffsetMatrix<float> loadDesignMatrix(const Run& run) {
    const int volumes = run.vtc.volumes();
    OffsetMatrix<float> design(0, volumes - 1, 0, kPredictors - 1);
    design.fill(0.0f);
    host().znClearDesignMatrix();
    if (isEmpty(run.names.designMatrix)) return design;
    if (host().znLoadSingleStudyGLMDesignMatrix(run.names.designMatrix.data()) == 0) {
        host().znLogText("// Plugin>  The provided RTC/SDM file was not found!");
        return design;
    }
    for (int p = 0; p < kPredictors; ++p) {
        const float* predictor = host().znGetPredictor(p);
        if (!predictor) break;
        for (int t = 0; t < volumes; ++t) design[t][p] = predictor[t];
    }
    return design;
}

// The eleven columns of the parameter file. It holds the degree of clustering divided by its largest value; the maps
// hold it unscaled.
void writeParameterFile(const Fingerprint& f, int components) {
    constexpr int kColumns = 11;
    const std::array<const OffsetVector<float>*, 6> vectors = {
        &f.scaledClustering, &f.skewness, &f.kurtosis, &f.spatialEntropy, &f.autocorrelation, &f.temporalEntropy};
    OffsetMatrix<float> parameters(0, components - 1, 0, kColumns - 1);
    for (int k = 0; k < components; ++k) {
        float* next = parameters[k];
        for (const auto* vector : vectors) *next++ = (*vector)[k];
        std::copy_n(f.bands[k], kColumns - static_cast<int>(vectors.size()), next);
    }
    writeFloatMatrix("ParamsMatrix.txt", parameters.get(), components, kColumns);
}

} // namespace

void computeFingerprint(Run& run) {
    const Components& c = run.components;
    const int voxels = run.vtc.voxels;
    const int volumes = run.vtc.volumes();
    host().znLogText("// Plugin>  Computing parameters of the Independent Components... ");
    host().znUpdateActiveWindow();
    run.cursor.stop();

    run.fingerprint = Fingerprint(c.count);
    computeSpatialFeatures(c.maps.get(), c.count, voxels, run.fingerprint);
    computeTemporalFeatures(c.timeCourses.get(), c.rawTimeCourses.get(), c.count, volumes,
                            run.vtc.header.repetitionTime, run.fingerprint);
    run.components.rawTimeCourses.release();
    askAndCluster(run);
    computeDesignMatch(loadDesignMatrix(run).get(), c.timeCourses.get(), volumes, c.count, run.fingerprint);
    computeTemplateMatch(c.maps.get(), run.templates.rows(), run.templates.count(), voxels, c.count, run.fingerprint);
    run.templates.release();
    writeParameterFile(run.fingerprint, c.count);
}

} // namespace zn
