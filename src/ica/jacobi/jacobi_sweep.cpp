#include "ica/jacobi/jacobi_sweep.h"

#include "ica/jacobi/rotate_rows.h"
#include "ica/jacobi/rotation_tile.h"
#include "numeric/instruction_set.h"

#include <algorithm>
#include <cmath>

namespace zn {

namespace {

// Tangent of the rotation angle that zeroes the element apq between diagonal elements that differ by h.
double tangent(double apq, double h, double g) {
    if (std::fabs(h) + g == std::fabs(h)) return apq / h;
    const double theta = 0.5 * h / apq;
    const double t = 1.0 / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
    return theta < 0.0 ? -t : t;
}

// The rotation that zeroes a[p][q], with the change that it makes to the diagonal.
PlaneRotation zeroElement(const JacobiState& state, int p, int q, double g) {
    double& apq = state.a[p][q];
    const double t = tangent(apq, state.d[q] - state.d[p], g);
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = t * c;
    const double h = t * apq;
    state.z[p] -= h;
    state.z[q] += h;
    state.d[p] -= h;
    state.d[q] += h;
    apq = 0.0;
    return {s, s / (1.0 + c), q};
}

constexpr int kTileColumns = 32; // of a tile that stays in the first-level cache

// The first rotation of a pass beyond column q.
const PlaneRotation* firstBehind(SweepRotations::Range pass, int q) {
    return std::partition_point(pass.begin(), pass.end(), [q](const PlaneRotation& r) { return r.q <= q; });
}

// Applies the rotations that lie right of the diagonal to `count` rows from `first` on. The inner loop runs over the
// rows: these are independent of each other, the rotations of one row are not.
void settleOneByOne(SweepRotations::Range rotations, double* shared, double** rows, int first, int count) {
    for (const PlaneRotation& rotation : rotations) {
        const int above = std::min(rotation.q - first, count);
        for (int i = 0; i < above; ++i) rotate(rotation, shared[i], rows[i][rotation.q]);
    }
}

// Applies to the rows first .. last, at most kTileRows, what the pass of p has deferred: to row j the rotations with
// q > j, which mix it with the element a[p][j].
void settleRows(const JacobiState& state, int p, int first, int last, const SweepRotations& rotations) {
    const auto pass = rotations.pass(p);
    const int count = last - first + 1;
    double* shared = state.a[p] + first;
    double** rows = state.a + first;

    // Columns of the rows themselves: the triangle right of the diagonal.
    const PlaneRotation* next = firstBehind(pass, last);
    settleOneByOne({firstBehind(pass, first), next}, shared, rows, first, count);

    TileColumn tile[kTileColumns];
    for (int from = last + 1; next != pass.end(); from += kTileColumns) {
        const int to = std::min(from + kTileColumns - 1, state.n);
        const PlaneRotation* end = firstBehind({next, pass.end()}, to);
        if (count == kTileRows && end - next >= kTileColumns / 4) {
            fillTile(rows, count, from, to, tile);
            rotateTile({next, end}, shared, tile, from);
            emptyTile(tile, count, from, to, rows);
        } else {
            settleOneByOne({next, end}, shared, rows, first, count);
        }
        next = end;
    }
}

} // namespace

void jacobiSweep(const JacobiState& state, double threshold, bool dropNegligible, SweepRotations& rotations) {
    const int n = state.n;
    double** a = state.a;
    const double* d = state.d;
    static const auto rotateRowsPAndQ = ZN_PICK_KERNEL(rotateStretchKernel);
    rotations.clear();
    for (int p = 1; p < n; ++p) {
        rotations.beginPass(p);
        if (p > 1) settleRows(state, p - 1, p, p, rotations);
        for (int q = p + 1; q <= n; ++q) {
            if (p > 1 && (q - p - 1) % kTileRows == 0) {
                settleRows(state, p - 1, q, std::min(q + kTileRows - 1, n), rotations);
            }
            const double size = std::fabs(a[p][q]);
            const double g = 100.0 * size;
            if (dropNegligible && std::fabs(d[p]) + g == std::fabs(d[p]) && std::fabs(d[q]) + g == std::fabs(d[q])) {
                a[p][q] = 0.0;
            } else if (size > threshold) {
                const PlaneRotation rotation = zeroElement(state, p, q, g);
                rotateRowsPAndQ(a[p], a[q], q + 1, n, rotation);
                rotations.add(rotation);
            }
        }
        rotations.endPass(p);
    }
    rotateRowsAboveDiagonal(a, n, rotations);
}

} // namespace zn
