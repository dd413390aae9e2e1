#include "headless/blas/symmetric_matrix.h"

#include <algorithm>
#include <cstdint>
#include <new>

#include <cblas.h>
#include <lapacke.h>

namespace zn::headless {

namespace {

// LAPACKE allocates work space. Its lack is not a property of the matrix, as other failures are.
int orNoMemory(int info) {
    if (info == LAPACK_WORK_MEMORY_ERROR || info == LAPACK_TRANSPOSE_MEMORY_ERROR) throw std::bad_alloc();
    return info;
}

} // namespace

void addCrossProducts(const double* rows, int count, int order, double scale, double* upper) {
    cblas_dsyrk(CblasRowMajor, CblasUpper, CblasTrans, order, count, scale, rows, order, 1.0, upper, order);
}

int symmetricEigenvalues(double* upper, int order, double* values) {
    // The upper triangle in row-major order is the lower one in column-major order.
    const int info = orNoMemory(LAPACKE_dsyev(LAPACK_COL_MAJOR, 'N', 'L', order, upper, order, values));
    std::reverse(values, values + order);
    return info;
}

int symmetricEigenpairs(double* upper, int order, double* values) {
    const int info = orNoMemory(LAPACKE_dsyevd(LAPACK_COL_MAJOR, 'V', 'L', order, upper, order, values));
    std::reverse(values, values + order);
    for (int i = 0; i < order / 2; ++i) { // columns in column-major order are our rows
        double* row = upper + std::int64_t{1} * i * order;
        std::swap_ranges(row, row + order, upper + std::int64_t{1} * (order - 1 - i) * order);
    }
    return info;
}

bool solvePositiveDefinite(double* upper, int order, double* right, int columns) {
    return orNoMemory(LAPACKE_dposv(LAPACK_ROW_MAJOR, 'U', order, columns, upper, order, right, columns)) == 0;
}

} // namespace zn::headless
