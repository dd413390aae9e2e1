#include "headless/blas/pseudo_inverse.h"

#include "headless/blas/one_blas_thread.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <vector>

#include <lapacke.h>

namespace zn::headless {

int pseudoInverse(const double* columns, int count, int length, double tolerance, double* inverse) {
    if (count == 0 || length == 0) return 0;
    const OneBlasThread one;
    const auto n = static_cast<std::size_t>(count);
    const auto m = static_cast<std::size_t>(length);
    const int stride = std::max(count, length);
    std::vector<double> a(columns, columns + n * m);
    std::vector<double> x(static_cast<std::size_t>(stride) * m); // in: the identity; out: column t solves A x = e_t
    for (std::size_t t = 0; t < m; ++t) x[t * static_cast<std::size_t>(stride) + t] = 1.0;
    std::vector<lapack_int> pivots(n);
    int rank = 0;
    const int info = LAPACKE_dgelsy(LAPACK_COL_MAJOR, length, count, length, a.data(), length, x.data(), stride,
                                    pivots.data(), tolerance, &rank);
    if (info == LAPACK_WORK_MEMORY_ERROR || info == LAPACK_TRANSPOSE_MEMORY_ERROR) throw std::bad_alloc();
    for (std::size_t k = 0; k < n; ++k) {
        for (std::size_t t = 0; t < m; ++t) inverse[k * m + t] = x[t * static_cast<std::size_t>(stride) + k];
    }
    return rank;
}

int rankOf(const double* columns, int count, int length, double tolerance) {
    std::vector<double> inverse(static_cast<std::size_t>(count) * static_cast<std::size_t>(length));
    return pseudoInverse(columns, count, length, tolerance, inverse.data());
}

} // namespace zn::headless
