#pragma once

#include "headless/symmetric/start_matrix.h"
#include "headless/symmetric/whitened_voxels.h"

#include <cmath>
#include <random>
#include <vector>

namespace zn::headless::test {

/// Independent sources of mean 0 and unit variance, mixed by a rotation: white up to sampling error, as after
/// whitening.
struct WhiteSources {
    int dimension;
    int voxels;
    std::vector<double> sources; ///< n x V
    std::vector<double> z;       ///< n x V

    WhitenedVoxels data() const { return {z.data(), dimension, voxels}; }
    const double* source(int k) const { return sources.data() + static_cast<std::ptrdiff_t>(k) * voxels; }
};

/// Exponentially distributed values of either sign, skewed; neighbouring rows are rotated by one radian, in turn.
inline WhiteSources whiteSources(int dimension, int voxels, unsigned seed) {
    std::mt19937 random(seed);
    const auto size = static_cast<std::size_t>(dimension) * static_cast<std::size_t>(voxels);
    WhiteSources result{dimension, voxels, std::vector<double>(size), {}};
    for (int k = 0; k < dimension; ++k) {
        double* row = result.sources.data() + static_cast<std::ptrdiff_t>(k) * voxels;
        double mean = 0.0;
        for (int v = 0; v < voxels; ++v) {
            const double value = -std::log(1.0 - uniform(random));
            row[v] = uniform(random) < 0.3 ? -value : value * (1.0 + 0.2 * k);
            mean += row[v] / voxels;
        }
        double square = 0.0;
        for (int v = 0; v < voxels; ++v) {
            row[v] -= mean;
            square += row[v] * row[v] / voxels;
        }
        for (int v = 0; v < voxels; ++v) row[v] /= std::sqrt(square);
    }
    result.z = result.sources;
    for (int k = 0; k + 1 < dimension; ++k) {
        double* a = result.z.data() + static_cast<std::ptrdiff_t>(k) * voxels;
        double* b = a + voxels;
        for (int v = 0; v < voxels; ++v) {
            const double first = std::cos(1.0) * a[v] - std::sin(1.0) * b[v];
            b[v] = std::sin(1.0) * a[v] + std::cos(1.0) * b[v];
            a[v] = first;
        }
    }
    return result;
}

} // namespace zn::headless::test
