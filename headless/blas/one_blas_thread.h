#pragma once

namespace zn::headless {

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
