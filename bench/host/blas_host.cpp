// The smallest host that the engine runs in: log, window, and the matrix products over OpenBLAS. Built as a module with
// the name that the engine looks for.
#include "host/update_clock.h"

#include <algorithm>
#include <cblas.h>
#include <chrono>

#define ZN_HOST_FUNCTION extern "C" __attribute__((visibility("default")))

namespace zn::bench {

UpdateClock& updateClock() {
    static UpdateClock clock;
    return clock;
}

} // namespace zn::bench

namespace {

void recordUpdate() {
    auto& clock = zn::bench::updateClock();
    clock.last = std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    if (clock.updates++ == 0) clock.first = clock.last;
}

CBLAS_TRANSPOSE flag(bool transpose) {
    return transpose ? CblasTrans : CblasNoTrans;
}

// r = xt x for x (k x n): half the work of a general product.
void symmetricProduct(const double* x, double* r, int n, int k) {
    cblas_dsyrk(CblasRowMajor, CblasUpper, CblasTrans, n, k, 1.0, x, n, 0.0, r, n);
    for (long long i = 0; i < n; ++i) {
        for (long long j = 0; j < i; ++j) r[i * n + j] = r[j * n + i];
    }
}

} // namespace

ZN_HOST_FUNCTION void znGetVersionOfTesmiraZN(int* major, int* minor, int* patch) {
    *major = 2;
    *minor = 2;
    *patch = 0;
}

ZN_HOST_FUNCTION void znLogText(const char*) {}

ZN_HOST_FUNCTION void znUpdateActiveWindow() {}

ZN_HOST_FUNCTION void zn_intel_matrix_matrix_mult_f(const float* a, const float* b, float* r, int m, int n, int k,
                                                    bool transposeA, bool transposeB) {
    cblas_sgemm(CblasRowMajor, flag(transposeA), flag(transposeB), m, n, k, 1.0f, a, transposeA ? m : k, b,
                transposeB ? k : n, 0.0f, r, n);
}

ZN_HOST_FUNCTION void zn_intel_matrix_matrix_mult_d(const double* a, const double* b, double* r, int m, int n, int k,
                                                    bool transposeA, bool transposeB) {
    if (a == b && m == n && transposeA && !transposeB) {
        symmetricProduct(a, r, n, k);
    } else {
        cblas_dgemm(CblasRowMajor, flag(transposeA), flag(transposeB), m, n, k, 1.0, a, transposeA ? m : k, b,
                    transposeB ? k : n, 0.0, r, n);
    }
}

ZN_HOST_FUNCTION void zn_intel_matrix_vector_mult_f(const float* a, const float* x, float* y, int m, int n,
                                                    bool transpose) {
    cblas_sgemv(CblasRowMajor, flag(transpose), m, n, 1.0f, a, n, x, 1, 0.0f, y, 1);
}

ZN_HOST_FUNCTION void zn_intel_matrix_vector_mult_d(const double* a, const double* x, double* y, int m, int n,
                                                    bool transpose) {
    if (transpose) recordUpdate();
    cblas_dgemv(CblasRowMajor, flag(transpose), m, n, 1.0, a, n, x, 1, 0.0, y, 1);
}
