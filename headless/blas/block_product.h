#pragma once

namespace zn::headless {

/// A row-major matrix inside a larger one, or the transpose of one.
struct MatrixBlock {
    const double* first;
    int stride; ///< elements from one stored row to the next
    bool transposed = false;
};

/// r (m x n) = a b, or r + a b where `add` is set, as one call of the BLAS (dgemm) on the calling thread: a is m x k
/// and b k x n, after transposition. Rows of r are `stride` elements apart. For blocks that stay in the cache.
void blockProduct(const MatrixBlock& a, const MatrixBlock& b, int m, int n, int k, bool add, double* r, int stride);

} // namespace zn::headless
