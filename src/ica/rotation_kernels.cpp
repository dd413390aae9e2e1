#include "ica/rotation_kernels.h"

#include "numeric/lanes.h"

namespace zn {

namespace {

// A square block of numbers, one Lanes a row, becomes its transpose.
[[gnu::always_inline]] inline void transpose(Lanes (&block)[kLanes]) {
#if ZN_LANES == 2
    const Lanes left = __builtin_shufflevector(block[0], block[1], 0, 2);
    block[1] = __builtin_shufflevector(block[0], block[1], 1, 3);
    block[0] = left;
#else
    const Lanes even01 = __builtin_shufflevector(block[0], block[1], 0, 4, 2, 6);
    const Lanes odd01 = __builtin_shufflevector(block[0], block[1], 1, 5, 3, 7);
    const Lanes even23 = __builtin_shufflevector(block[2], block[3], 0, 4, 2, 6);
    const Lanes odd23 = __builtin_shufflevector(block[2], block[3], 1, 5, 3, 7);
    block[0] = __builtin_shufflevector(even01, even23, 0, 1, 4, 5);
    block[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5);
    block[2] = __builtin_shufflevector(even01, even23, 2, 3, 6, 7);
    block[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7);
#endif
}

} // namespace

template <int lanes> void fillTileKernel(const double* const* rows, int first, int last, double* tile) {
    for (int i = 0; i < kTileRows; i += lanes) {
        int q = first;
        for (; q + lanes <= last + 1; q += lanes) {
            Lanes block[kLanes];
            for (int j = 0; j < lanes; ++j) block[j] = load(rows[i + j] + q);
            transpose(block);
            for (int j = 0; j < lanes; ++j) store(block[j], tile + (q + j) * kTileRows + i);
        }
        for (; q <= last; ++q) {
            for (int j = 0; j < lanes; ++j) tile[q * kTileRows + i + j] = rows[i + j][q];
        }
    }
}

template <int lanes> void emptyTileKernel(const double* tile, int first, int last, double* const* rows) {
    for (int i = 0; i < kTileRows; i += lanes) {
        int q = first;
        for (; q + lanes <= last + 1; q += lanes) {
            Lanes block[kLanes];
            for (int j = 0; j < lanes; ++j) block[j] = load(tile + (q + j) * kTileRows + i);
            transpose(block);
            for (int j = 0; j < lanes; ++j) store(block[j], rows[i + j] + q);
        }
        for (; q <= last; ++q) {
            for (int j = 0; j < lanes; ++j) rows[i + j][q] = tile[q * kTileRows + i + j];
        }
    }
}

template <int lanes>
void rotateTileKernel(const PlaneRotation* first, const PlaneRotation* last, double* shared, double* tile) {
    constexpr int kParts = kTileRows / lanes;
    Lanes x[kParts];
    for (int i = 0; i < kParts; ++i) x[i] = load(shared + i * lanes);
    for (const PlaneRotation* rotation = first; rotation != last; ++rotation) {
        double* column = tile + rotation->q * kTileRows;
        const Lanes s = broadcast(rotation->s);
        const Lanes tau = broadcast(rotation->tau);
        for (int i = 0; i < kParts; ++i) {
            const Lanes g = x[i];
            const Lanes h = load(column + i * lanes);
            x[i] = g - s * (h + g * tau);
            store(h + s * (g - h * tau), column + i * lanes);
        }
    }
    for (int i = 0; i < kParts; ++i) store(x[i], shared + i * lanes);
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

template void fillTileKernel<kLanes>(const double* const*, int, int, double*);
template void emptyTileKernel<kLanes>(const double*, int, int, double* const*);
template void rotateTileKernel<kLanes>(const PlaneRotation*, const PlaneRotation*, double*, double*);
template void rotateStretchKernel<kLanes>(double*, double*, int, int, const PlaneRotation&);

} // namespace zn
