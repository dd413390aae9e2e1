#include "fingerprint/match_design_matrix.h"

#include "fingerprint/correlate.h"
#include "fingerprint/mean_and_variance.h"
#include "numeric/array_owners.h"
#include "numeric/transpose_matrix.h"

#include <cmath>

namespace zn {

void matchDesignMatrix(const float* const* designMatrix, const float* const* timeCourses, int predictors, int t, int k,
                       float* bestCorrelation, float* bestIndex, float* standardDeviation) {
    const OffsetMatrix<float> courses(0, k - 1, 0, t - 1);
    transposeMatrix(timeCourses, courses.get(), t, k);
    const OffsetMatrix<float> design(0, predictors - 1, 0, t - 1);
    transposeMatrix(designMatrix, design.get(), t, predictors);
    const OffsetMatrix<float> r(0, k - 1, 0, predictors - 1);
    correlateRows(courses.get(), k, design.get(), predictors, t, r.get());

    const OffsetVector<float> mean(0, k - 1);
    rowMeansAndVariances(courses.get(), k, t, mean.get(), standardDeviation);
    for (int i = 0; i < k; ++i) {
        float best = 0;
        int index = 0; // on purpose: without a match the first predictor is reported
        for (int p = 0; p < predictors; ++p) {
            if (std::fabs(r[i][p]) > best) {
                best = std::fabs(r[i][p]);
                index = p;
            }
        }
        bestCorrelation[i] = best;
        bestIndex[i] = static_cast<float>(index + 1);
        standardDeviation[i] = std::sqrt(standardDeviation[i]);
    }
}

} // namespace zn
