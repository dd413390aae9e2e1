// The host's four matrix products over a CBLAS. All arrays are contiguous row-major blocks.
#include "headless/host/host_exports.h"

#include <cblas.h>

#include <algorithm>
#include <cstdint>

namespace zn {

namespace {

// One overload a precision, so that the products below are written once.
void gemm(CBLAS_TRANSPOSE a, CBLAS_TRANSPOSE b, int m, int n, int k, const double* left, int strideA,
          const double* right, int strideB, double* r) {
    cblas_dgemm(CblasRowMajor, a, b, m, n, k, 1.0, left, strideA, right, strideB, 0.0, r, n);
}
void gemm(CBLAS_TRANSPOSE a, CBLAS_TRANSPOSE b, int m, int n, int k, const float* left, int strideA, const float* right,
          int strideB, float* r) {
    cblas_sgemm(CblasRowMajor, a, b, m, n, k, 1.0f, left, strideA, right, strideB, 0.0f, r, n);
}
void syrk(CBLAS_TRANSPOSE transpose, int n, int k, const double* a, int stride, double* r) {
    cblas_dsyrk(CblasRowMajor, CblasUpper, transpose, n, k, 1.0, a, stride, 0.0, r, n);
}
void syrk(CBLAS_TRANSPOSE transpose, int n, int k, const float* a, int stride, float* r) {
    cblas_ssyrk(CblasRowMajor, CblasUpper, transpose, n, k, 1.0f, a, stride, 0.0f, r, n);
}
void gemv(CBLAS_TRANSPOSE transpose, int m, int n, const double* a, const double* x, double* y) {
    cblas_dgemv(CblasRowMajor, transpose, m, n, 1.0, a, n, x, 1, 0.0, y, 1);
}
void gemv(CBLAS_TRANSPOSE transpose, int m, int n, const float* a, const float* x, float* y) {
    cblas_sgemv(CblasRowMajor, transpose, m, n, 1.0f, a, n, x, 1, 0.0f, y, 1);
}

CBLAS_TRANSPOSE flag(bool transpose) {
    return transpose ? CblasTrans : CblasNoTrans;
}

template <class Real> void mirrorUpperTriangle(Real* r, int n) {
    for (std::int64_t i = 0; i < n; ++i) {
        for (std::int64_t j = i + 1; j < n; ++j) r[j * n + i] = r[i * n + j];
    }
}

template <class Real>
void matrixTimesMatrix(const Real* a, const Real* b, Real* r, int m, int n, int k, bool transposeA, bool transposeB) {
    if (m <= 0 || n <= 0) return;
    if (k <= 0) {
        std::fill_n(r, std::int64_t{m} * n, Real{0}); // a sum of nothing
        return;
    }
    const int strideA = transposeA ? m : k;
    const int strideB = transposeB ? k : n;
    // A block times its own transpose, the covariance above all: half the work, and exactly symmetric.
    if (a == b && m == n && transposeA != transposeB) {
        syrk(flag(transposeA), m, k, a, strideA, r);
        mirrorUpperTriangle(r, m);
        return;
    }
    gemm(flag(transposeA), flag(transposeB), m, n, k, a, strideA, b, strideB, r);
}

template <class Real> void matrixTimesVector(const Real* a, const Real* x, Real* y, int m, int n, bool transpose) {
    const int results = transpose ? n : m;
    if (results <= 0) return;
    if ((transpose ? m : n) <= 0) {
        std::fill_n(y, results, Real{0});
        return;
    }
    gemv(flag(transpose), m, n, a, x, y);
}

} // namespace

extern "C" {

void zn_intel_matrix_matrix_mult_f(const float* a, const float* b, float* r, int m, int n, int k, bool transposeA,
                                   bool transposeB) {
    matrixTimesMatrix(a, b, r, m, n, k, transposeA, transposeB);
}

void zn_intel_matrix_matrix_mult_d(const double* a, const double* b, double* r, int m, int n, int k, bool transposeA,
                                   bool transposeB) {
    matrixTimesMatrix(a, b, r, m, n, k, transposeA, transposeB);
}

void zn_intel_matrix_vector_mult_f(const float* a, const float* x, float* y, int m, int n, bool transpose) {
    matrixTimesVector(a, x, y, m, n, transpose);
}

void zn_intel_matrix_vector_mult_d(const double* a, const double* x, double* y, int m, int n, bool transpose) {
    matrixTimesVector(a, x, y, m, n, transpose);
}

} // extern "C"

} // namespace zn
