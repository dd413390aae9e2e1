#include "ica/jacobi/jacobi.h"

#include "ica/jacobi/jacobi_sweep.h"
#include "ica/jacobi/rotate_rows.h"
#include "numeric/array_owners.h"
#include "numeric/nrerror.h"

#include <cmath>

namespace zn {

namespace {

constexpr int kSweeps = 50;
constexpr int kCoarseSweeps = 3;      // these rotate only elements above a threshold
constexpr int kSweepsWithoutDrop = 4; // after these, negligible elements are set to zero without a rotation

void setToIdentity(double** v, int n) {
    for (int p = 1; p <= n; ++p) {
        for (int q = 1; q <= n; ++q) v[p][q] = p == q ? 1.0 : 0.0;
    }
}

double sumAboveDiagonal(double** a, int n) {
    double sum = 0.0;
    for (int p = 1; p < n; ++p) {
        for (int q = p + 1; q <= n; ++q) sum += std::fabs(a[p][q]);
    }
    return sum;
}

} // namespace

void jacobi(double** a, int n, double* d, double** v, int* nrot) {
    setToIdentity(v, n);
    OffsetVector<double> b(1, n); // diagonal at the start of the sweep
    OffsetVector<double> z(1, n); // changes that the sweep adds to it
    for (int p = 1; p <= n; ++p) {
        b[p] = d[p] = a[p][p];
        z[p] = 0.0;
    }
    *nrot = 0;

    const JacobiState state{a, n, d, z.get()};
    SweepRotations rotations(n);
    for (int sweep = 1; sweep <= kSweeps; ++sweep) {
        const double sum = sumAboveDiagonal(a, n);
        if (sum == 0.0) return;
        const double threshold = sweep <= kCoarseSweeps ? 0.2 * sum / (static_cast<double>(n) * n) : 0.0;
        jacobiSweep(state, threshold, sweep > kSweepsWithoutDrop, rotations);
        rotateRows(v, n, n, rotations);
        *nrot += static_cast<int>(rotations.count());
        for (int p = 1; p <= n; ++p) {
            b[p] += z[p];
            d[p] = b[p];
            z[p] = 0.0;
        }
    }
    nrerror("Too many iterations in routine jacobi");
}

} // namespace zn
