#include "eigen.h"
#include "lapacke.h"

#include <new>

namespace {

using Matrix = Eigen::MatrixXd;
using RowMajorMatrix = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;

template <class Work> int orNoMemory(Work work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return LAPACK_WORK_MEMORY_ERROR;
    }
}

int decompose(char job, int n, double* a, double* values) {
    return orNoMemory([&] {
        Eigen::Map<Matrix> matrix(a, n, n);
        const bool vectors = job == 'V';
        const Eigen::SelfAdjointEigenSolver<Matrix> solver(matrix, vectors ? Eigen::ComputeEigenvectors
                                                                           : Eigen::EigenvaluesOnly);
        if (solver.info() != Eigen::Success) return 1;
        Eigen::Map<Eigen::VectorXd>(values, n) = solver.eigenvalues();
        if (vectors) matrix = solver.eigenvectors();
        return 0;
    });
}

} // namespace

int LAPACKE_dsyev(int, char job, char, int n, double* a, int, double* values) {
    return decompose(job, n, a, values);
}

int LAPACKE_dsyevd(int, char job, char, int n, double* a, int, double* values) {
    return decompose(job, n, a, values);
}

int LAPACKE_dposv(int, char, int n, int columns, double* a, int, double* b, int) {
    return orNoMemory([&] {
        const Eigen::Map<RowMajorMatrix> matrix(a, n, n);
        const Eigen::LLT<Matrix, Eigen::Upper> factor(matrix);
        if (factor.info() != Eigen::Success) return 1;
        Eigen::Map<RowMajorMatrix> right(b, n, columns);
        right = factor.solve(right).eval();
        return 0;
    });
}
