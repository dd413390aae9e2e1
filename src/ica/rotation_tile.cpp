#include "ica/rotation_tile.h"

#include "numeric/instruction_set.h"

namespace zn {

// Both copies go two rows and two columns at a time, so that the compilers join neighbouring elements.

void fillTile(const double* const* rows, int count, int first, int last, double* tile) {
    int i = 0;
    for (; i + 1 < count; i += 2) {
        const double* upper = rows[i];
        const double* lower = rows[i + 1];
        for (int q = first; q <= last; ++q) {
            const double pair[2] = {upper[q], lower[q]};
            tile[q * kTileRows + i] = pair[0];
            tile[q * kTileRows + i + 1] = pair[1];
        }
    }
    for (int q = first; i < count && q <= last; ++q) tile[q * kTileRows + i] = rows[i][q];
}

void emptyTile(const double* tile, int count, int first, int last, double* const* rows) {
    for (int i = 0; i < count; ++i) {
        double* row = rows[i];
        int q = first;
        for (; q < last; q += 2) {
            const double pair[2] = {tile[q * kTileRows + i], tile[(q + 1) * kTileRows + i]};
            row[q] = pair[0];
            row[q + 1] = pair[1];
        }
        if (q == last) row[q] = tile[q * kTileRows + i];
    }
}

void rotateTile(SweepRotations::Range rotations, double* shared, double* tile) {
    static const auto kernel = ZN_PICK_KERNEL(rotateTileKernel);
    kernel(rotations.first, rotations.last, shared, tile);
}

} // namespace zn
