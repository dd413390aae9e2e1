#include "ica/rotate_rows.h"

#include "ica/rotation_tile.h"
#include "numeric/array_owners.h"

#include <algorithm>

namespace zn {

namespace {

// The passes from firstPass on, for rows `first` .. `first` + count - 1.
void rotateRowGroup(double** m, int first, int count, int firstPass, int n, const SweepRotations& rotations,
                    double* tile) {
    fillTile(m + first, count, firstPass, n, tile);
    for (int p = firstPass; p < n; ++p) rotateTile(rotations.pass(p), tile + p * kTileRows, tile);
    emptyTile(tile, count, firstPass, n, m + first);
}

OffsetVector<double> makeTile(int n) {
    OffsetVector<double> tile(0, (n + 1) * kTileRows - 1);
    tile.fill(0.0); // rows that a last, smaller group does not have
    return tile;
}

} // namespace

void rotateRows(double** m, int rows, int n, const SweepRotations& rotations) {
    const OffsetVector<double> tile = makeTile(n);
    for (int first = 1; first <= rows; first += kTileRows) {
        rotateRowGroup(m, first, std::min(kTileRows, rows - first + 1), 1, n, rotations, tile.get());
    }
}

void rotateRowsAboveDiagonal(double** a, int n, const SweepRotations& rotations) {
    const OffsetVector<double> tile = makeTile(n);
    for (int first = 1; first < n; first += kTileRows) {
        const int count = std::min(kTileRows, n - first + 1);
        // The first passes go past some rows of the group but not past others; from the last row on all take part.
        const int common = std::min(first + count, n);
        for (int p = first + 1; p < common; ++p) {
            for (const PlaneRotation& rotation : rotations.pass(p)) {
                for (int j = first; j < p; ++j) rotate(rotation, a[j][p], a[j][rotation.q]);
            }
        }
        rotateRowGroup(a, first, count, common, n, rotations, tile.get());
    }
}

} // namespace zn
