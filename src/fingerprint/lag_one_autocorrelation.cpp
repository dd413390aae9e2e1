#include "fingerprint/lag_one_autocorrelation.h"

#include "fingerprint/mean_and_variance.h"
#include "numeric/array_owners.h"
#include "numeric/transpose_matrix.h"

#include <cmath>

namespace zn {

namespace {

float lagOneOfRow(const float* row, int t, float mean, float sd) {
    float lagged = 0;
    float squares = 0;
    for (int i = 0; i < t - 1; ++i) { // the last volume only enters as a lagged value
        const float z = (row[i] - mean) / sd;
        const float next = (row[i + 1] - mean) / sd;
        lagged += z * next;
        squares += z * z;
    }
    return lagged / squares;
}

} // namespace

void lagOneAutocorrelation(const float* const* timeCourses, int t, int k, float* signedOut, float* absoluteOut) {
    const OffsetMatrix<float> rows(0, k - 1, 0, t - 1);
    transposeMatrix(timeCourses, rows.get(), t, k);
    const OffsetVector<float> mean(0, k - 1);
    const OffsetVector<float> variance(0, k - 1);
    rowMeansAndVariances(rows.get(), k, t, mean.get(), variance.get());
    for (int j = 0; j < k; ++j) {
        signedOut[j] = lagOneOfRow(rows[j], t, mean[j], std::sqrt(variance[j]));
        absoluteOut[j] = std::fabs(signedOut[j]);
    }
}

} // namespace zn
