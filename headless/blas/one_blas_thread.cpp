#include "headless/blas/one_blas_thread.h"

#include <cblas.h>

namespace zn::headless {

OneBlasThread::OneBlasThread() : before_(openblas_get_num_threads()) {
    openblas_set_num_threads(1);
}

OneBlasThread::~OneBlasThread() {
    openblas_set_num_threads(before_);
}

} // namespace zn::headless
