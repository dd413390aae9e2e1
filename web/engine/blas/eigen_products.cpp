#include "cblas.h"
#include "eigen.h"

namespace {

using Eigen::Dynamic;
template <class Real> using RowMajor = Eigen::Matrix<Real, Dynamic, Dynamic, Eigen::RowMajor>;
template <class Real> using Rows = Eigen::Map<RowMajor<Real>, Eigen::Unaligned, Eigen::OuterStride<>>;
template <class Real> using ConstRows = Eigen::Map<const RowMajor<Real>, Eigen::Unaligned, Eigen::OuterStride<>>;
template <class Real> using Vector = Eigen::Map<Eigen::Vector<Real, Dynamic>>;
template <class Real> using ConstVector = Eigen::Map<const Eigen::Vector<Real, Dynamic>>;

// As in the BLAS, what c holds does not count where beta is 0, not even NaN.
template <class Target, class Real> void scale(Target&& c, Real beta) {
    if (beta == Real{0}) {
        c.setZero();
    } else if (beta != Real{1}) {
        c *= beta;
    }
}

template <class Real>
void gemm(CBLAS_TRANSPOSE transposeA, CBLAS_TRANSPOSE transposeB, int m, int n, int k, Real alpha, const Real* a,
          int strideA, const Real* b, int strideB, Real beta, Real* c, int strideC) {
    const bool flipA = transposeA == CblasTrans;
    const bool flipB = transposeB == CblasTrans;
    const ConstRows<Real> left(a, flipA ? k : m, flipA ? m : k, Eigen::OuterStride<>(strideA));
    const ConstRows<Real> right(b, flipB ? n : k, flipB ? k : n, Eigen::OuterStride<>(strideB));
    Rows<Real> result(c, m, n, Eigen::OuterStride<>(strideC));
    scale(result, beta);
    if (flipA && flipB) {
        result.noalias() += alpha * left.transpose() * right.transpose();
    } else if (flipA) {
        result.noalias() += alpha * left.transpose() * right;
    } else if (flipB) {
        result.noalias() += alpha * left * right.transpose();
    } else {
        result.noalias() += alpha * left * right;
    }
}

template <class Real>
void syrk(CBLAS_TRANSPOSE transpose, int n, int k, Real alpha, const Real* a, int strideA, Real beta, Real* c,
          int strideC) {
    const bool flip = transpose == CblasTrans;
    const ConstRows<Real> factor(a, flip ? k : n, flip ? n : k, Eigen::OuterStride<>(strideA));
    Rows<Real> result(c, n, n, Eigen::OuterStride<>(strideC));
    for (int i = 0; i < n; ++i) scale(result.row(i).tail(n - i), beta);
    auto upper = result.template selfadjointView<Eigen::Upper>();
    if (flip) {
        upper.rankUpdate(factor.transpose(), alpha);
    } else {
        upper.rankUpdate(factor, alpha);
    }
}

template <class Real>
void gemv(CBLAS_TRANSPOSE transpose, int m, int n, Real alpha, const Real* a, int strideA, const Real* x, Real beta,
          Real* y) {
    const ConstRows<Real> matrix(a, m, n, Eigen::OuterStride<>(strideA));
    if (transpose == CblasTrans) {
        Vector<Real> result(y, n);
        scale(result, beta);
        result.noalias() += alpha * matrix.transpose() * ConstVector<Real>(x, m);
    } else {
        Vector<Real> result(y, m);
        scale(result, beta);
        result.noalias() += alpha * matrix * ConstVector<Real>(x, n);
    }
}

} // namespace

void cblas_dgemm(CBLAS_ORDER, CBLAS_TRANSPOSE transposeA, CBLAS_TRANSPOSE transposeB, int m, int n, int k, double alpha,
                 const double* a, int strideA, const double* b, int strideB, double beta, double* c, int strideC) {
    gemm(transposeA, transposeB, m, n, k, alpha, a, strideA, b, strideB, beta, c, strideC);
}

void cblas_sgemm(CBLAS_ORDER, CBLAS_TRANSPOSE transposeA, CBLAS_TRANSPOSE transposeB, int m, int n, int k, float alpha,
                 const float* a, int strideA, const float* b, int strideB, float beta, float* c, int strideC) {
    gemm(transposeA, transposeB, m, n, k, alpha, a, strideA, b, strideB, beta, c, strideC);
}

void cblas_dsyrk(CBLAS_ORDER, CBLAS_UPLO, CBLAS_TRANSPOSE transpose, int n, int k, double alpha, const double* a,
                 int strideA, double beta, double* c, int strideC) {
    syrk(transpose, n, k, alpha, a, strideA, beta, c, strideC);
}

void cblas_ssyrk(CBLAS_ORDER, CBLAS_UPLO, CBLAS_TRANSPOSE transpose, int n, int k, float alpha, const float* a,
                 int strideA, float beta, float* c, int strideC) {
    syrk(transpose, n, k, alpha, a, strideA, beta, c, strideC);
}

void cblas_dgemv(CBLAS_ORDER, CBLAS_TRANSPOSE transpose, int m, int n, double alpha, const double* a, int strideA,
                 const double* x, int, double beta, double* y, int) {
    gemv(transpose, m, n, alpha, a, strideA, x, beta, y);
}

void cblas_sgemv(CBLAS_ORDER, CBLAS_TRANSPOSE transpose, int m, int n, float alpha, const float* a, int strideA,
                 const float* x, int, float beta, float* y, int) {
    gemv(transpose, m, n, alpha, a, strideA, x, beta, y);
}

#define ZN_TEXT(number) #number
#define ZN_AS_TEXT(number) ZN_TEXT(number)

const char* openblas_get_config() {
    return "Eigen " ZN_AS_TEXT(EIGEN_WORLD_VERSION) "." ZN_AS_TEXT(EIGEN_MAJOR_VERSION) "." ZN_AS_TEXT(
        EIGEN_MINOR_VERSION);
}

const char* openblas_get_corename() {
    return "WebAssembly SIMD";
}

int openblas_get_num_threads() {
    return 1;
}

void openblas_set_num_threads(int) {}
