#pragma once

#include "headless/host/host_exports.h"

namespace zn::headless {

/// How many threads the matrix products use from now on, at least 1. Without a call: as many as the BLAS would, which
/// are the processors, or OPENBLAS_NUM_THREADS. The number changes no bit of a result.
ZN_HOST_EXPORT void setProductThreads(int threads);

/// That number.
ZN_HOST_EXPORT int productThreads();

} // namespace zn::headless
