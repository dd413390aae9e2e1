#pragma once

namespace zn::headless {

/// As many threads as the BLAS uses unless it is told otherwise: the number of processors, or OPENBLAS_NUM_THREADS. It
/// has started them already.
int blasThreadsAtStart();

/// While an object of this class exists, calls of the BLAS and of LAPACK use one thread, so that their results do not
/// depend on the number of processors. Afterwards they use as many as before.
class OneBlasThread {
public:
    OneBlasThread();
    ~OneBlasThread();
    OneBlasThread(const OneBlasThread&) = delete;
    OneBlasThread& operator=(const OneBlasThread&) = delete;

private:
    int before_;
};

} // namespace zn::headless
