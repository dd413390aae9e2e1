#include "ica/jacobi/rotate_rows.h"

#include "ica/jacobi/rotation_tile.h"

#include <algorithm>
#include <vector>

namespace zn {

namespace {

// Up to kTileRows rows of a matrix, to all of which the passes from firstPass on apply.
struct RowGroup {
    double** rows;
    int count;
    int firstPass;
};

void rotateGroup(const RowGroup& group, int n, const SweepRotations& rotations, TileColumn* tile) {
    fillTile(group.rows, group.count, group.firstPass, n, tile + group.firstPass);
    for (int p = group.firstPass; p < n; ++p) rotateTile(rotations.pass(p), tile[p].row, tile, 0);
    emptyTile(tile + group.firstPass, group.count, group.firstPass, n, group.rows);
}

// Two groups, the second of which starts no earlier than the first.
void rotateTwoGroups(const RowGroup& a, const RowGroup& b, int n, const SweepRotations& rotations, TileColumn* tileA,
                     TileColumn* tileB) {
    fillTile(a.rows, a.count, a.firstPass, n, tileA + a.firstPass);
    fillTile(b.rows, b.count, b.firstPass, n, tileB + b.firstPass);
    for (int p = a.firstPass; p < b.firstPass; ++p) rotateTile(rotations.pass(p), tileA[p].row, tileA, 0);
    TileColumn* const tiles[] = {tileA, tileB};
    for (int p = b.firstPass; p < n; ++p) {
        double* const shared[] = {tileA[p].row, tileB[p].row};
        rotateTwoTiles(rotations.pass(p), shared, tiles);
    }
    emptyTile(tileA + a.firstPass, a.count, a.firstPass, n, a.rows);
    emptyTile(tileB + b.firstPass, b.count, b.firstPass, n, b.rows);
}

// Rotates the groups that makeGroup returns for the rows 1, 1 + kTileRows, ... before `end`.
template <class MakeGroup> void rotateGroups(int end, MakeGroup makeGroup, int n, const SweepRotations& rotations) {
    // Zeroed, because a smaller last group leaves some rows of the tile unset.
    std::vector<TileColumn> tileA(static_cast<std::size_t>(n) + 1);
    std::vector<TileColumn> tileB(tileA);
    int first = 1;
    if (twoTilesAreFaster()) {
        for (; first + kTileRows < end; first += 2 * kTileRows) {
            const RowGroup group = makeGroup(first);
            rotateTwoGroups(group, makeGroup(first + kTileRows), n, rotations, tileA.data(), tileB.data());
        }
    }
    for (; first < end; first += kTileRows) rotateGroup(makeGroup(first), n, rotations, tileA.data());
}

} // namespace

void rotateRows(double** m, int rows, int n, const SweepRotations& rotations) {
    const auto makeGroup = [&](int first) { return RowGroup{m + first, std::min(kTileRows, rows - first + 1), 1}; };
    rotateGroups(rows + 1, makeGroup, n, rotations);
}

void rotateRowsAboveDiagonal(double** a, int n, const SweepRotations& rotations) {
    const auto makeGroup = [&](int first) {
        const int count = std::min(kTileRows, n - first + 1);
        // The first passes apply to some rows of the group only; from the last row on they apply to all of them.
        const int common = std::min(first + count, n);
        for (int p = first + 1; p < common; ++p) {
            for (const PlaneRotation& rotation : rotations.pass(p)) {
                for (int j = first; j < p; ++j) rotate(rotation, a[j][p], a[j][rotation.q]);
            }
        }
        return RowGroup{a + first, count, common};
    };
    rotateGroups(n, makeGroup, n, rotations);
}

} // namespace zn
