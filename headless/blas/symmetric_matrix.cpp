#include "headless/blas/symmetric_matrix.h"

#include <algorithm>

#include <cblas.h>
#include <lapacke.h>

namespace zn::headless {

void addCrossProducts(const double* rows, int count, int order, double scale, double* upper) {
    cblas_dsyrk(CblasRowMajor, CblasUpper, CblasTrans, order, count, scale, rows, order, 1.0, upper, order);
}

int symmetricEigenvalues(double* upper, int order, double* values) {
    // The upper triangle in row-major order is the lower one in column-major order.
    const int info = LAPACKE_dsyev(LAPACK_COL_MAJOR, 'N', 'L', order, upper, order, values);
    std::reverse(values, values + order);
    return info;
}

bool solvePositiveDefinite(double* upper, int order, double* right, int columns) {
    return LAPACKE_dposv(LAPACK_ROW_MAJOR, 'U', order, columns, upper, order, right, columns) == 0;
}

} // namespace zn::headless
