#pragma once

namespace zn {

/// Rotation of two elements, of rows or columns p and q, by the angle with sine s and half-angle tangent tau:
/// (x, y) -> (x - s (y + x tau), y + s (x - y tau)).
struct PlaneRotation {
    double s;
    double tau;
    int q;
};

/// Rows of a matrix that are rotated side by side: enough to hide the latency of one rotation behind the others.
constexpr int kTileRows = 16;

/// The elements of one column in these rows. Aligned to a cache line, so that no vector straddles two.
struct alignas(64) TileColumn {
    double row[kTileRows];
};

/// Applies rotations first .. last - 1 of one pass to kTileRows rows: each mixes shared[i], the element p of row i,
/// with its element q, tile[q - origin].row[i].
template <int lanes>
void rotateTileKernel(const PlaneRotation* first, const PlaneRotation* last, double* shared, TileColumn* tile,
                      int origin);

/// The same for two tiles side by side, which hides the latency of wider vectors where there are enough registers; the
/// origin is 0.
template <int lanes>
void rotateTwoTilesKernel(const PlaneRotation* first, const PlaneRotation* last, double* const* shared,
                          TileColumn* const* tiles);

/// Copies columns first .. last of kTileRows rows into a tile that starts with column `first`, and back.
template <int lanes> void fillTileKernel(const double* const* rows, int first, int last, TileColumn* tile);
template <int lanes> void emptyTileKernel(const TileColumn* tile, int first, int last, double* const* rows);

/// Rotates the elements x[j] and y[j], first <= j <= last; x and y do not overlap.
template <int lanes> void rotateStretchKernel(double* x, double* y, int first, int last, const PlaneRotation& rotation);

} // namespace zn
