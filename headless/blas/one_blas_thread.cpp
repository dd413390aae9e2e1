#include "headless/blas/one_blas_thread.h"

#include <cblas.h>

namespace zn::headless {

int blasThreadsAtStart() {
    static const int number = openblas_get_num_threads(); // the first call precedes every change of the number
    return number;
}

OneBlasThread::OneBlasThread() : before_(openblas_get_num_threads()) {
    blasThreadsAtStart();
    openblas_set_num_threads(1);
}

OneBlasThread::~OneBlasThread() {
    openblas_set_num_threads(before_);
}

} // namespace zn::headless
