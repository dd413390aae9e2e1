#include "fingerprint/match_templates.h"

#include "fingerprint/correlate.h"
#include "numeric/array_owners.h"

#include <cmath>

namespace zn {

void matchTemplates(const float* const* maps, const float* const* templates, int m, int v, int k,
                    float* bestCorrelation, float* bestIndex) {
    const OffsetMatrix<float> r(0, k - 1, 0, m - 1);
    if (m > 0) correlateRows(maps, k, templates, m, v, r.get());
    for (int i = 0; i < k; ++i) {
        bestCorrelation[i] = 0;
        bestIndex[i] = 0;
        for (int j = 0; j < m; ++j) {
            if (std::fabs(r[i][j]) > bestCorrelation[i]) {
                bestCorrelation[i] = std::fabs(r[i][j]);
                bestIndex[i] = static_cast<float>(j + 1);
            }
        }
    }
}

} // namespace zn
