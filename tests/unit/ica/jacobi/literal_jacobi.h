#pragma once

#include "numeric/array_owners.h"

#include <cmath>

namespace zn::test {

/// The cyclic Jacobi method written down step by step, as a reference for the order of every operation.
/// All arrays [1..n]; false when 50 sweeps do not suffice.
inline bool literalJacobi(double** a, int n, double* d, double** v) {
    OffsetVector<double> b(1, n);
    OffsetVector<double> z(1, n);
    for (int p = 1; p <= n; ++p) {
        for (int q = 1; q <= n; ++q) v[p][q] = 0.0;
        v[p][p] = 1.0;
        b[p] = d[p] = a[p][p];
        z[p] = 0.0;
    }
    const auto rotate = [](double** m, int i, int j, int k, int l, double s, double tau) {
        const double g = m[i][j];
        const double h = m[k][l];
        m[i][j] = g - s * (h + g * tau);
        m[k][l] = h + s * (g - h * tau);
    };
    for (int i = 1; i <= 50; ++i) {
        double sm = 0.0;
        for (int p = 1; p <= n - 1; ++p) {
            for (int q = p + 1; q <= n; ++q) sm += std::fabs(a[p][q]);
        }
        if (sm == 0.0) return true;
        const double threshold = i < 4 ? 0.2 * sm / (static_cast<double>(n) * n) : 0.0;
        for (int p = 1; p <= n - 1; ++p) {
            for (int q = p + 1; q <= n; ++q) {
                const double g = 100.0 * std::fabs(a[p][q]);
                if (i > 4 && std::fabs(d[p]) + g == std::fabs(d[p]) && std::fabs(d[q]) + g == std::fabs(d[q])) {
                    a[p][q] = 0.0;
                    continue;
                }
                if (!(std::fabs(a[p][q]) > threshold)) continue;
                double h = d[q] - d[p];
                double t = 0.0;
                if (std::fabs(h) + g == std::fabs(h)) {
                    t = a[p][q] / h;
                } else {
                    const double theta = 0.5 * h / a[p][q];
                    t = 1.0 / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
                    if (theta < 0.0) t = -t;
                }
                const double c = 1.0 / std::sqrt(t * t + 1.0);
                const double s = t * c;
                const double tau = s / (1.0 + c);
                h = t * a[p][q];
                z[p] -= h;
                z[q] += h;
                d[p] -= h;
                d[q] += h;
                a[p][q] = 0.0;
                for (int j = 1; j <= p - 1; ++j) rotate(a, j, p, j, q, s, tau);
                for (int j = p + 1; j <= q - 1; ++j) rotate(a, p, j, j, q, s, tau);
                for (int j = q + 1; j <= n; ++j) rotate(a, p, j, q, j, s, tau);
                for (int j = 1; j <= n; ++j) rotate(v, j, p, j, q, s, tau);
            }
        }
        for (int p = 1; p <= n; ++p) {
            b[p] += z[p];
            d[p] = b[p];
            z[p] = 0.0;
        }
    }
    return false;
}

} // namespace zn::test
