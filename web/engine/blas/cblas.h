#pragma once

// The part of the CBLAS that the headless host uses, on top of Eigen: the same functions under the same names, so that
// headless/blas compiles as it is. Everything runs on the calling thread.

enum CBLAS_ORDER { CblasRowMajor = 101 };
enum CBLAS_TRANSPOSE { CblasNoTrans = 111, CblasTrans = 112 };
enum CBLAS_UPLO { CblasUpper = 121 };

extern "C" {

/// c (m x n) = alpha op(a) op(b) + beta c
void cblas_dgemm(CBLAS_ORDER order, CBLAS_TRANSPOSE transposeA, CBLAS_TRANSPOSE transposeB, int m, int n, int k,
                 double alpha, const double* a, int strideA, const double* b, int strideB, double beta, double* c,
                 int strideC);
void cblas_sgemm(CBLAS_ORDER order, CBLAS_TRANSPOSE transposeA, CBLAS_TRANSPOSE transposeB, int m, int n, int k,
                 float alpha, const float* a, int strideA, const float* b, int strideB, float beta, float* c,
                 int strideC);

/// Upper triangle of c (n x n) = alpha op(a) op(a)t + beta c; op(a) is n x k
void cblas_dsyrk(CBLAS_ORDER order, CBLAS_UPLO half, CBLAS_TRANSPOSE transpose, int n, int k, double alpha,
                 const double* a, int strideA, double beta, double* c, int strideC);
void cblas_ssyrk(CBLAS_ORDER order, CBLAS_UPLO half, CBLAS_TRANSPOSE transpose, int n, int k, float alpha,
                 const float* a, int strideA, float beta, float* c, int strideC);

/// y = alpha op(a) x + beta y; a is stored as m x n
void cblas_dgemv(CBLAS_ORDER order, CBLAS_TRANSPOSE transpose, int m, int n, double alpha, const double* a, int strideA,
                 const double* x, int stepX, double beta, double* y, int stepY);
void cblas_sgemv(CBLAS_ORDER order, CBLAS_TRANSPOSE transpose, int m, int n, float alpha, const float* a, int strideA,
                 const float* x, int stepX, float beta, float* y, int stepY);

/// What stands for the BLAS in a record, and its threads: always one.
const char* openblas_get_config();
const char* openblas_get_corename();
int openblas_get_num_threads();
void openblas_set_num_threads(int threads);
}
