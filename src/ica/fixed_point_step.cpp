#include "ica/fixed_point_step.h"

#include "host/host_api.h"
#include "ica/contrast/contrast.h"

#include <algorithm>

namespace zn {

namespace {

void cubeStep(const WhitenedData& data, double* w, double* y, double* work) {
    for (int v = 0; v < data.voxels; ++v) y[v] = y[v] * y[v] * y[v];
    std::fill_n(work, data.dimension, 0.0);
    products().zn_intel_matrix_vector_mult_d(data.z, y, work, data.dimension, data.voxels, false);
    for (int k = 0; k < data.dimension; ++k) w[k] = work[k] / data.voxels - 3.0 * w[k];
}

void contrastStep(Nonlinearity nonlinearity, const WhitenedData& data, double* w, double* y, double* work) {
    double slope = 0.0;
    sumContrast(nonlinearity, data.z, data.dimension, data.voxels, y, work, &slope);
    for (int k = 0; k < data.dimension; ++k) w[k] = (work[k] - slope * w[k]) / data.voxels;
}

} // namespace

void fixedPointStep(Nonlinearity nonlinearity, const WhitenedData& data, double* w, double* y, double* work) {
    std::fill_n(y, data.voxels, 0.0);
    products().zn_intel_matrix_vector_mult_d(data.z, w, y, data.dimension, data.voxels, true);
    if (nonlinearity == Nonlinearity::cube) {
        cubeStep(data, w, y, work);
    } else {
        contrastStep(nonlinearity, data, w, y, work);
    }
}

} // namespace zn
