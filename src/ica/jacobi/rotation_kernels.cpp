#include "ica/jacobi/rotation_kernels.h"

#include "numeric/lanes.h"

namespace zn {

namespace {

// Blocks of 2 x 2 or 4 x 4 numbers are transposed as a whole, for any vector width.
constexpr int kBlock = kLanes < 4 ? kLanes : 4;
using BlockRow = double __attribute__((vector_size(kBlock * sizeof(double))));

// Transposes a square block of numbers in place.
[[gnu::always_inline]] inline void transpose(BlockRow (&block)[kBlock]) {
#if ZN_LANES == 2
    const BlockRow left = __builtin_shufflevector(block[0], block[1], 0, 2);
    block[1] = __builtin_shufflevector(block[0], block[1], 1, 3);
    block[0] = left;
#else
    const BlockRow even01 = __builtin_shufflevector(block[0], block[1], 0, 4, 2, 6);
    const BlockRow odd01 = __builtin_shufflevector(block[0], block[1], 1, 5, 3, 7);
    const BlockRow even23 = __builtin_shufflevector(block[2], block[3], 0, 4, 2, 6);
    const BlockRow odd23 = __builtin_shufflevector(block[2], block[3], 1, 5, 3, 7);
    block[0] = __builtin_shufflevector(even01, even23, 0, 1, 4, 5);
    block[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5);
    block[2] = __builtin_shufflevector(even01, even23, 2, 3, 6, 7);
    block[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7);
#endif
}

template <int count>
[[gnu::always_inline]] inline void rotateTiles(const PlaneRotation* first, const PlaneRotation* last,
                                               double* const* shared, TileColumn* const* tiles, int origin) {
    constexpr int kParts = kTileRows / kLanes;
    Lanes x[count][kParts];
    TileColumn* tile[count]; // a copy, which no store can change
    for (int t = 0; t < count; ++t) {
        tile[t] = tiles[t];
        for (int i = 0; i < kParts; ++i) x[t][i] = load(group(shared[t], i));
    }
    for (const PlaneRotation* rotation = first; rotation != last; ++rotation) {
        const Lanes s = broadcast(rotation->s);
        const Lanes tau = broadcast(rotation->tau);
        for (int t = 0; t < count; ++t) {
            double* column = tile[t][rotation->q - origin].row;
            for (int i = 0; i < kParts; ++i) {
                const Lanes g = x[t][i];
                const Lanes h = load(group(column, i));
                x[t][i] = g - s * (h + g * tau);
                store(h + s * (g - h * tau), group(column, i));
            }
        }
    }
    for (int t = 0; t < count; ++t) {
        for (int i = 0; i < kParts; ++i) store(x[t][i], group(shared[t], i));
    }
}

} // namespace

template <int lanes> void fillTileKernel(const double* const* rows, int first, int last, TileColumn* tile) {
    for (int i = 0; i < kTileRows; i += kBlock) {
        int q = first;
        for (; q + kBlock <= last + 1; q += kBlock) {
            BlockRow block[kBlock];
            for (int j = 0; j < kBlock; ++j) block[j] = load<BlockRow>(rows[i + j] + q);
            transpose(block);
            for (int j = 0; j < kBlock; ++j) store(block[j], tile[q - first + j].row + i);
        }
        for (; q <= last; ++q) {
            for (int j = 0; j < kBlock; ++j) tile[q - first].row[i + j] = rows[i + j][q];
        }
    }
}

template <int lanes> void emptyTileKernel(const TileColumn* tile, int first, int last, double* const* rows) {
    for (int i = 0; i < kTileRows; i += kBlock) {
        int q = first;
        for (; q + kBlock <= last + 1; q += kBlock) {
            BlockRow block[kBlock];
            for (int j = 0; j < kBlock; ++j) block[j] = load<BlockRow>(tile[q - first + j].row + i);
            transpose(block);
            for (int j = 0; j < kBlock; ++j) store(block[j], rows[i + j] + q);
        }
        for (; q <= last; ++q) {
            for (int j = 0; j < kBlock; ++j) rows[i + j][q] = tile[q - first].row[i + j];
        }
    }
}

template <int lanes>
void rotateTileKernel(const PlaneRotation* first, const PlaneRotation* last, double* shared, TileColumn* tile,
                      int origin) {
    rotateTiles<1>(first, last, &shared, &tile, origin);
}

template <int lanes>
void rotateTwoTilesKernel(const PlaneRotation* first, const PlaneRotation* last, double* const* shared,
                          TileColumn* const* tiles) {
    rotateTiles<2>(first, last, shared, tiles, 0);
}

template <int lanes>
void rotateStretchKernel(double* __restrict x, double* __restrict y, int first, int last,
                         const PlaneRotation& rotation) {
    const double s = rotation.s;
    const double tau = rotation.tau;
    for (int j = first; j <= last; ++j) {
        const double g = x[j];
        const double h = y[j];
        x[j] = g - s * (h + g * tau);
        y[j] = h + s * (g - h * tau);
    }
}

template void fillTileKernel<kLanes>(const double* const*, int, int, TileColumn*);
template void emptyTileKernel<kLanes>(const TileColumn*, int, int, double* const*);
template void rotateTileKernel<kLanes>(const PlaneRotation*, const PlaneRotation*, double*, TileColumn*, int);
template void rotateTwoTilesKernel<kLanes>(const PlaneRotation*, const PlaneRotation*, double* const*,
                                           TileColumn* const*);
template void rotateStretchKernel<kLanes>(double*, double*, int, int, const PlaneRotation&);

} // namespace zn
