#include "ica/reconstruction.h"

#include "host/host_api.h"
#include "numeric/transpose_matrix.h"

#include <algorithm>

namespace zn {

namespace {

// A and F from M and Q; M is released.
void takeTimeCourses(Separation& separation, int volumes, Components& components) {
    for (int t = 0; t < volumes; ++t) {
        for (int i = 0; i < components.count; ++i) {
            components.timeCourses[t][i] = static_cast<float>(separation.mixing.row(t)[i]);
            components.separatingRows[i][t] = static_cast<float>(separation.separating.row(i)[t]);
        }
    }
    separation.mixing.release();
}

OffsetMatrix<float> projectMaps(ZeroedBlock& x, int voxels, int volumes, Separation& separation) {
    const int count = separation.found;
    ZeroedBlock product(count, voxels);
    products().zn_intel_matrix_matrix_mult_d(separation.separating.get(), x.get(), product.get(), count, voxels,
                                             volumes, false, true);
    separation.separating.release();
    x.release();

    OffsetMatrix<float> maps(0, count - 1, 0, voxels - 1);
    for (int i = 0; i < count; ++i) {
        std::transform(product.row(i), product.row(i) + voxels, maps[i],
                       [](double value) { return static_cast<float>(value); });
    }
    return maps;
}

} // namespace

Components reconstruct(ZeroedBlock& x, int voxels, int volumes, Separation& separation) {
    const int last = separation.found - 1;
    Components components;
    components.count = separation.found;
    components.timeCourses = OffsetMatrix<float>(0, volumes - 1, 0, last);
    components.rawTimeCourses = OffsetMatrix<float>(0, last, 0, volumes - 1);
    components.separatingRows = OffsetMatrix<float>(0, last, 0, volumes - 1);
    takeTimeCourses(separation, volumes, components);
    components.maps = projectMaps(x, voxels, volumes, separation);

    transposeMatrix(components.timeCourses.get(), components.rawTimeCourses.get(), volumes, components.count);
    scaleColumnsToUnitRange(components.timeCourses.get(), volumes, components.count);
    return components;
}

void scaleColumnsToUnitRange(float* const* matrix, int rows, int columns) {
    if (rows < 1) return;
    for (int j = 0; j < columns; ++j) {
        // Strict comparisons starting with the first value: how a NaN affects them is part of the result.
        float minimum = matrix[0][j];
        for (int t = 1; t < rows; ++t) {
            if (matrix[t][j] < minimum) minimum = matrix[t][j];
        }
        for (int t = 0; t < rows; ++t) matrix[t][j] -= minimum;
        float maximum = matrix[0][j];
        for (int t = 1; t < rows; ++t) {
            if (matrix[t][j] > maximum) maximum = matrix[t][j];
        }
        for (int t = 0; t < rows; ++t) matrix[t][j] /= maximum;
    }
}

} // namespace zn
