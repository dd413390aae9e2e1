#pragma once

#include "ica/jacobi/sweep_rotations.h"

namespace zn {

/// A stretch of kTileRows rows with the rows next to each other: element q of row i stands at tile[q - origin].row[i],
/// where the origin is the tile's first column.
///
/// Copies columns first .. last of the rows into a tile with the origin `first`. Rows beyond `count` are left as they
/// are.
void fillTile(const double* const* rows, int count, int first, int last, TileColumn* tile);

/// Copies them back.
void emptyTile(const TileColumn* tile, int count, int first, int last, double* const* rows);

/// Applies rotations of one pass to all rows of a tile: each mixes shared[i], the element p of row i, with element q.
void rotateTile(SweepRotations::Range rotations, double* shared, TileColumn* tile, int origin);

/// The same for two tiles with the origin 0. Whether this beats one tile after the other depends on the processor.
void rotateTwoTiles(SweepRotations::Range rotations, double* const* shared, TileColumn* const* tiles);
bool twoTilesAreFaster();

} // namespace zn
