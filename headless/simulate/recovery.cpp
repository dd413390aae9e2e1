#include "headless/simulate/recovery.h"

#include <cmath>

namespace zn::headless {

double correlationInMask(std::span<const float> a, std::span<const float> b, std::span<const unsigned char> mask) {
    double count = 0.0;
    double meanA = 0.0;
    double meanB = 0.0;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] == 0) continue;
        count += 1.0;
        meanA += static_cast<double>(a[v]);
        meanB += static_cast<double>(b[v]);
    }
    meanA /= count;
    meanB /= count;
    double ab = 0.0;
    double aa = 0.0;
    double bb = 0.0;
    for (std::size_t v = 0; v < mask.size(); ++v) {
        if (mask[v] == 0) continue;
        const double da = static_cast<double>(a[v]) - meanA;
        const double db = static_cast<double>(b[v]) - meanB;
        ab += da * db;
        aa += da * da;
        bb += db * db;
    }
    return ab / std::sqrt(aa * bb);
}

std::vector<Recovery> recover(std::span<const float> truth, std::span<const float> found,
                              std::span<const unsigned char> mask) {
    std::vector<Recovery> recoveries(truth.size() / mask.size());
    for (std::size_t source = 0; source < recoveries.size(); ++source) {
        const auto trueMap = truth.subspan(source * mask.size(), mask.size());
        for (std::size_t c = 0; c < found.size() / mask.size(); ++c) {
            const double r = std::fabs(correlationInMask(trueMap, found.subspan(c * mask.size(), mask.size()), mask));
            if (r > recoveries[source].correlation) recoveries[source] = {static_cast<int>(c), r};
        }
    }
    return recoveries;
}

} // namespace zn::headless
