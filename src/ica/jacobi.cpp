#include "ica/jacobi.h"

#include "numeric/array_owners.h"
#include "numeric/nrerror.h"

#include <cmath>

namespace zn {

namespace {

constexpr int kSweeps = 50;
constexpr int kCoarseSweeps = 3; // these rotate only elements above a threshold

struct Rotation {
    double s;   // sine
    double tau; // tangent of half the angle

    void apply(double& x, double& y) const {
        const double g = x;
        const double h = y;
        x = g - s * (h + g * tau);
        y = h + s * (g - h * tau);
    }
};

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

// Tangent of the rotation angle that zeroes the element apq between diagonal elements that differ by h.
double tangent(double apq, double h, double g) {
    if (std::fabs(h) + g == std::fabs(h)) return apq / h;
    const double theta = 0.5 * h / apq;
    const double t = 1.0 / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
    return theta < 0.0 ? -t : t;
}

void rotateMatrix(double** a, int n, int p, int q, const Rotation& rotation) {
    for (int j = 1; j < p; ++j) rotation.apply(a[j][p], a[j][q]);
    for (int j = p + 1; j < q; ++j) rotation.apply(a[p][j], a[j][q]);
    for (int j = q + 1; j <= n; ++j) rotation.apply(a[p][j], a[q][j]);
}

} // namespace

void jacobi(double** a, int n, double* d, double** v, int* nrot) {
    setToIdentity(v, n);
    OffsetVector<double> b(1, n); // diagonal at the start of the sweep
    OffsetVector<double> z(1, n); // what the sweep adds to it
    for (int p = 1; p <= n; ++p) {
        b[p] = d[p] = a[p][p];
        z[p] = 0.0;
    }
    *nrot = 0;

    for (int sweep = 1; sweep <= kSweeps; ++sweep) {
        const double sum = sumAboveDiagonal(a, n);
        if (sum == 0.0) return;
        const double threshold = sweep <= kCoarseSweeps ? 0.2 * sum / (static_cast<double>(n) * n) : 0.0;

        for (int p = 1; p < n; ++p) {
            for (int q = p + 1; q <= n; ++q) {
                const double g = 100.0 * std::fabs(a[p][q]);
                if (sweep > 4 && std::fabs(d[p]) + g == std::fabs(d[p]) && std::fabs(d[q]) + g == std::fabs(d[q])) {
                    a[p][q] = 0.0; // negligible beside both diagonal elements
                } else if (std::fabs(a[p][q]) > threshold) {
                    const double t = tangent(a[p][q], d[q] - d[p], g);
                    const double c = 1.0 / std::sqrt(t * t + 1.0);
                    const double s = t * c;
                    const Rotation rotation{s, s / (1.0 + c)};
                    const double h = t * a[p][q];
                    z[p] -= h;
                    z[q] += h;
                    d[p] -= h;
                    d[q] += h;
                    a[p][q] = 0.0;
                    rotateMatrix(a, n, p, q, rotation);
                    for (int j = 1; j <= n; ++j) rotation.apply(v[j][p], v[j][q]);
                    ++*nrot;
                }
            }
        }
        for (int p = 1; p <= n; ++p) {
            b[p] += z[p];
            d[p] = b[p];
            z[p] = 0.0;
        }
    }
    nrerror("Too many iterations in routine jacobi");
}

} // namespace zn
