#include "headless/symmetric/decorrelate.h"

#include "headless/blas/block_product.h"
#include "headless/blas/symmetric_matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace zn::headless {

namespace {

UnmixingMatrix product(const UnmixingMatrix& a, const UnmixingMatrix& b, bool transposeA, bool transposeB) {
    const int n = a.dimension();
    UnmixingMatrix result(n);
    blockProduct({a.data(), n, transposeA}, {b.data(), n, transposeB}, n, n, n, false, result.data(), n);
    return result;
}

} // namespace

bool decorrelate(UnmixingMatrix& w) {
    const int n = w.dimension();
    const auto isFinite = [](double value) { return std::isfinite(value); };
    UnmixingMatrix vectors = product(w, w, false, true);
    if (!std::all_of(vectors.row(0), vectors.row(n), isFinite)) return false; // LAPACK might not return

    std::vector<double> values(static_cast<std::size_t>(n));
    if (symmetricEigenpairs(vectors.data(), n, values.data()) != 0) return false;
    if (!(values.back() > n * std::numeric_limits<double>::epsilon() * values.front())) return false;

    UnmixingMatrix scaled = vectors; // row k, an eigenvector, over the root of its eigenvalue
    for (int k = 0; k < n; ++k) {
        const double root = std::sqrt(values[static_cast<std::size_t>(k)]);
        std::transform(scaled.row(k), scaled.row(k + 1), scaled.row(k), [root](double value) { return value / root; });
    }
    w = product(product(vectors, scaled, true, false), w, false, false);
    return true;
}

} // namespace zn::headless
