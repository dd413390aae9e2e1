#include "ica/jacobi/rotation_tile.h"

#include "numeric/instruction_set.h"

namespace zn {

void fillTile(const double* const* rows, int count, int first, int last, TileColumn* tile) {
    static const auto kernel = ZN_PICK_KERNEL(fillTileKernel);
    if (count == kTileRows) return kernel(rows, first, last, tile);
    for (int i = 0; i < count; ++i) {
        for (int q = first; q <= last; ++q) tile[q - first].row[i] = rows[i][q];
    }
}

void emptyTile(const TileColumn* tile, int count, int first, int last, double* const* rows) {
    static const auto kernel = ZN_PICK_KERNEL(emptyTileKernel);
    if (count == kTileRows) return kernel(tile, first, last, rows);
    for (int i = 0; i < count; ++i) {
        for (int q = first; q <= last; ++q) rows[i][q] = tile[q - first].row[i];
    }
}

void rotateTile(SweepRotations::Range rotations, double* shared, TileColumn* tile, int origin) {
    static const auto kernel = ZN_PICK_KERNEL(rotateTileKernel);
    kernel(rotations.first, rotations.last, shared, tile, origin);
}

void rotateTwoTiles(SweepRotations::Range rotations, double* const* shared, TileColumn* const* tiles) {
    static const auto kernel = ZN_PICK_KERNEL(rotateTwoTilesKernel);
    kernel(rotations.first, rotations.last, shared, tiles);
}

bool twoTilesAreFaster() {
    return kernelLanes() == 8; // processors with narrower vectors have half the registers
}

} // namespace zn
