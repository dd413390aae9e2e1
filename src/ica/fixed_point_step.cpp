#include "ica/fixed_point_step.h"

#include "host/host_api.h"

#include <algorithm>
#include <cmath>

namespace zn {

namespace {

void cubeStep(const WhitenedData& data, double* w, double* y, double* work) {
    for (int v = 0; v < data.voxels; ++v) y[v] = y[v] * y[v] * y[v];
    std::fill_n(work, data.dimension, 0.0);
    products().zn_intel_matrix_vector_mult_d(data.z, y, work, data.dimension, data.voxels, false);
    for (int k = 0; k < data.dimension; ++k) w[k] = work[k] / data.voxels - 3.0 * w[k];
}

// g in place of y; the result is the sum of g' over the voxels.
double applyTanh(double* y, int voxels) {
    double slope = 0.0;
    for (int v = 0; v < voxels; ++v) {
        y[v] = std::tanh(y[v]);
        slope += 1.0 - y[v] * y[v];
    }
    return slope;
}

double applyGaussian(double* y, int voxels) {
    double slope = 0.0;
    for (int v = 0; v < voxels; ++v) {
        const double square = y[v] * y[v];
        const double bell = std::exp(-square / 2.0);
        slope += (1.0 - square) * bell;
        y[v] *= bell;
    }
    return slope;
}

void contrastStep(const WhitenedData& data, const double* g, double slope, double* w) {
    for (int k = 0; k < data.dimension; ++k) {
        const double* z = data.z + static_cast<long long>(k) * data.voxels;
        double sum = 0.0;
        for (int v = 0; v < data.voxels; ++v) sum += z[v] * g[v];
        w[k] = (sum - slope * w[k]) / data.voxels;
    }
}

} // namespace

void fixedPointStep(Nonlinearity nonlinearity, const WhitenedData& data, double* w, double* y, double* work) {
    std::fill_n(y, data.voxels, 0.0);
    products().zn_intel_matrix_vector_mult_d(data.z, w, y, data.dimension, data.voxels, true);
    switch (nonlinearity) {
    case Nonlinearity::cube:
        cubeStep(data, w, y, work);
        break;
    case Nonlinearity::tanh:
        contrastStep(data, y, applyTanh(y, data.voxels), w);
        break;
    case Nonlinearity::gaussian:
        contrastStep(data, y, applyGaussian(y, data.voxels), w);
        break;
    }
}

} // namespace zn
