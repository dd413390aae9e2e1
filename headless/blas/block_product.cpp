#include "headless/blas/block_product.h"

#include <cblas.h>

namespace zn::headless {

void blockProduct(const MatrixBlock& a, const MatrixBlock& b, int m, int n, int k, bool add, double* r, int stride) {
    const auto flag = [](const MatrixBlock& block) { return block.transposed ? CblasTrans : CblasNoTrans; };
    cblas_dgemm(CblasRowMajor, flag(a), flag(b), m, n, k, 1.0, a.first, a.stride, b.first, b.stride, add ? 1.0 : 0.0, r,
                stride);
}

} // namespace zn::headless
