#include "headless/blas/matrix_products.h"

#include "headless/batch/batch_job.h"
#include "headless/blas/one_blas_thread.h"

#include <cblas.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace zn::headless {

namespace {

// One overload per precision, so that the products below are written only once.
void gemm(CBLAS_TRANSPOSE a, CBLAS_TRANSPOSE b, int m, int n, int k, const double* left, int strideA,
          const double* right, int strideB, double* r, int strideR) {
    cblas_dgemm(CblasRowMajor, a, b, m, n, k, 1.0, left, strideA, right, strideB, 0.0, r, strideR);
}
void gemm(CBLAS_TRANSPOSE a, CBLAS_TRANSPOSE b, int m, int n, int k, const float* left, int strideA, const float* right,
          int strideB, float* r, int strideR) {
    cblas_sgemm(CblasRowMajor, a, b, m, n, k, 1.0f, left, strideA, right, strideB, 0.0f, r, strideR);
}
void syrk(CBLAS_TRANSPOSE transpose, int n, int k, const double* a, int stride, double* r) {
    cblas_dsyrk(CblasRowMajor, CblasUpper, transpose, n, k, 1.0, a, stride, 0.0, r, n);
}
void syrk(CBLAS_TRANSPOSE transpose, int n, int k, const float* a, int stride, float* r) {
    cblas_ssyrk(CblasRowMajor, CblasUpper, transpose, n, k, 1.0f, a, stride, 0.0f, r, n);
}
void gemv(CBLAS_TRANSPOSE transpose, int m, int n, const double* a, int stride, const double* x, double* y) {
    cblas_dgemv(CblasRowMajor, transpose, m, n, 1.0, a, stride, x, 1, 0.0, y, 1);
}
void gemv(CBLAS_TRANSPOSE transpose, int m, int n, const float* a, int stride, const float* x, float* y) {
    cblas_sgemv(CblasRowMajor, transpose, m, n, 1.0f, a, stride, x, 1, 0.0f, y, 1);
}

CBLAS_TRANSPOSE flag(bool transpose) {
    return transpose ? CblasTrans : CblasNoTrans;
}

struct Block {
    int first;
    int size;
};

Block blockOf(int number, int size, int total) {
    const int first = number * size;
    return {first, std::min(size, total - first)};
}

int blocksIn(int total, int size) {
    return total / size + (total % size != 0 ? 1 : 0);
}

// Work of one block in multiplications and additions: a few hundred microseconds, well above the cost of a wake-up.
constexpr std::int64_t kBlockWork = 1 << 19;

// Results per block when each is a sum of `terms` products; whole cache lines, so that no two threads share one.
int resultsPerBlock(std::int64_t terms) {
    return static_cast<int>(
        std::clamp<std::int64_t>(kBlockWork / std::max<std::int64_t>(terms, 1) / 16 * 16, 16, 8192));
}

template <class Real> void mirrorUpperTriangle(Real* r, int n) {
    for (std::int64_t i = 0; i < n; ++i) {
        for (std::int64_t j = i + 1; j < n; ++j) r[j * n + i] = r[i * n + j];
    }
}

// Upper triangle of the product of a block with its own transpose; `transpose` as in the BLAS: the sum runs over the
// rows. A long sum is taken in groups of as many blocks as there are threads, whose results are added in order.
template <class Real>
void productWithItself(WorkerThreads& team, bool transpose, int n, int k, const Real* a, int stride, Real* r) {
    constexpr int kTerms = 4096;
    const int blocks = blocksIn(k, kTerms);
    const std::int64_t size = std::int64_t{n} * n;
    const auto part = [&](int number, Real* result) {
        const Block block = blockOf(number, kTerms, k);
        const std::int64_t start = transpose ? std::int64_t{block.first} * stride : block.first;
        syrk(flag(transpose), n, block.size, a + start, stride, result);
    };
    part(0, r);
    const int together = std::min(team.threads(), blocks - 1);
    std::vector<Real> parts(static_cast<std::size_t>(std::max(together, 0) * size));
    for (int first = 1; first < blocks; first += together) {
        const int count = std::min(together, blocks - first);
        team.run(count, [&](int i) { part(first + i, parts.data() + i * size); });
        for (int i = 0; i < count; ++i) {
            const Real* from = parts.data() + i * size;
            for (std::int64_t element = 0; element < size; ++element) r[element] += from[element];
        }
    }
}

} // namespace

MatrixProducts::MatrixProducts(int threads) : team_(std::max(threads, 1)) {
    blasThreadsAtStart();
    openblas_set_num_threads(1); // every block is one call on the thread that picks it up
}

int MatrixProducts::defaultThreads() {
    return std::min(blasThreadsAtStart(), batchJobProcessors().value_or(blasThreadsAtStart()));
}

template <class Real>
void MatrixProducts::multiply(const Real* a, const Real* b, Real* r, int m, int n, int k, bool transposeA,
                              bool transposeB) {
    if (m <= 0 || n <= 0) return;
    if (k <= 0) {
        std::fill_n(r, std::int64_t{m} * n, Real{0}); // an empty sum
        return;
    }
    const int strideA = transposeA ? m : k;
    const int strideB = transposeB ? k : n;
    // A block times its own transpose, mainly the covariance: half the work, and exactly symmetric.
    if (a == b && m == n && transposeA != transposeB) {
        productWithItself(team_, transposeA, m, k, a, strideA, r);
        mirrorUpperTriangle(r, m);
        return;
    }
    const bool wide = n >= m; // blocks of columns of r, otherwise of rows
    const int size = resultsPerBlock(std::int64_t{k} * (wide ? m : n));
    team_.run(blocksIn(wide ? n : m, size), [&](int number) {
        const Block block = blockOf(number, size, wide ? n : m);
        const std::int64_t first = block.first;
        if (wide) {
            gemm(flag(transposeA), flag(transposeB), m, block.size, k, a, strideA, b + (transposeB ? first * k : first),
                 strideB, r + first, n);
        } else {
            gemm(flag(transposeA), flag(transposeB), block.size, n, k, a + (transposeA ? first : first * k), strideA, b,
                 strideB, r + first * n, n);
        }
    });
}

template <class Real>
void MatrixProducts::multiplyVector(const Real* a, const Real* x, Real* y, int m, int n, bool transpose) {
    const int results = transpose ? n : m;
    const int terms = transpose ? m : n;
    if (results <= 0) return;
    if (terms <= 0) {
        std::fill_n(y, results, Real{0});
        return;
    }
    const int size = resultsPerBlock(terms);
    team_.run(blocksIn(results, size), [&](int number) {
        const Block block = blockOf(number, size, results);
        const std::int64_t first = block.first;
        if (transpose) {
            gemv(CblasTrans, m, block.size, a + first, n, x, y + first);
        } else {
            gemv(CblasNoTrans, block.size, n, a + first * n, n, x, y + first);
        }
    });
}

template void MatrixProducts::multiply(const float*, const float*, float*, int, int, int, bool, bool);
template void MatrixProducts::multiply(const double*, const double*, double*, int, int, int, bool, bool);
template void MatrixProducts::multiplyVector(const float*, const float*, float*, int, int, bool);
template void MatrixProducts::multiplyVector(const double*, const double*, double*, int, int, bool);

} // namespace zn::headless
