#pragma once

#include "headless/blas/worker_threads.h"

#include <optional>

namespace zn::headless {

/// Matrix products on top of a CBLAS, shared among threads, bit-identical for any number of threads.
///
/// The BLAS splits a product among its threads in a way that depends on their number, and so do the order of the sums
/// and the last bits. Here every product is cut into blocks of a fixed size, each block is one call of the BLAS on one
/// thread, and partial sums are added in the order of the blocks.
///
/// All arrays are contiguous row-major blocks. From the first object of this class on, the BLAS itself uses one thread.
class MatrixProducts {
public:
    /// At least one thread, counting the caller's own.
    explicit MatrixProducts(int threads);

    /// As many threads as the BLAS would use (blasThreadsAtStart()), but no more than the batch job has processors.
    static int defaultThreads();

    /// As many as the user wants; if nothing is said, defaultThreads().
    static int threadsFor(const std::optional<int>& wanted) { return wanted ? *wanted : defaultThreads(); }

    int threads() const { return team_.threads(); }
    /// The threads, for other work between the products.
    WorkerThreads& team() { return team_; }

    /// r (m x n) = op(a) op(b): op(a) is m x k and op(b) k x n, so a transposed operand is stored as k x m or n x k.
    template <class Real>
    void multiply(const Real* a, const Real* b, Real* r, int m, int n, int k, bool transposeA, bool transposeB);

    /// y = op(a) x for a stored as m x n: x has n elements and y m, or the reverse when a is transposed.
    template <class Real> void multiplyVector(const Real* a, const Real* x, Real* y, int m, int n, bool transpose);

private:
    WorkerThreads team_;
};

} // namespace zn::headless
