// The host's four matrix products.
#include "headless/host/current_session.h"

namespace zn::headless {

namespace {

template <class Real> void multiplyVector(const Real* a, const Real* x, Real* y, int m, int n, bool transpose) {
    Session& session = currentSession();
    if (m > 0 && n > 0) session.events->vectorProduct(transpose);
    session.products->multiplyVector(a, x, y, m, n, transpose);
}

} // namespace

extern "C" {

void zn_intel_matrix_matrix_mult_f(const float* a, const float* b, float* r, int m, int n, int k, bool transposeA,
                                   bool transposeB) {
    currentSession().products->multiply(a, b, r, m, n, k, transposeA, transposeB);
}

void zn_intel_matrix_matrix_mult_d(const double* a, const double* b, double* r, int m, int n, int k, bool transposeA,
                                   bool transposeB) {
    currentSession().products->multiply(a, b, r, m, n, k, transposeA, transposeB);
}

void zn_intel_matrix_vector_mult_f(const float* a, const float* x, float* y, int m, int n, bool transpose) {
    multiplyVector(a, x, y, m, n, transpose);
}

void zn_intel_matrix_vector_mult_d(const double* a, const double* x, double* y, int m, int n, bool transpose) {
    multiplyVector(a, x, y, m, n, transpose);
}

} // extern "C"

} // namespace zn::headless
