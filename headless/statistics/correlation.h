#pragma once

#include <cmath>
#include <cstddef>

namespace zn::headless {

/// Pearson correlation over the elements i of both for which uses(i), in double precision; NaN when one of the two does
/// not vary there.
///
///   a, b   equally many numbers
template <class A, class B, class Uses> double correlation(const A& a, const B& b, Uses uses) {
    double count = 0.0;
    double meanA = 0.0;
    double meanB = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!uses(i)) continue;
        ++count;
        meanA += static_cast<double>(a[i]);
        meanB += static_cast<double>(b[i]);
    }
    meanA /= count;
    meanB /= count;
    double ab = 0.0;
    double aa = 0.0;
    double bb = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (!uses(i)) continue;
        const double da = static_cast<double>(a[i]) - meanA;
        const double db = static_cast<double>(b[i]) - meanB;
        ab += da * db;
        aa += da * da;
        bb += db * db;
    }
    return ab / std::sqrt(aa * bb);
}

} // namespace zn::headless
