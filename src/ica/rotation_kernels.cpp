#include "ica/rotation_kernels.h"

#include "numeric/lanes.h"

namespace zn {

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

template void rotateTileKernel<kLanes>(const PlaneRotation*, const PlaneRotation*, double*, double*);
template void rotateStretchKernel<kLanes>(double*, double*, int, int, const PlaneRotation&);

} // namespace zn
