#include "ica/separation.h"

namespace zn {

Separation emptySeparation(int volumes, int dimension) {
    return {ZeroedBlock(volumes, dimension), ZeroedBlock(dimension, volumes)};
} // NOLINT(clang-analyzer-unix.Malloc): the blocks are the caller's now

void addComponent(const double* w, int dimension, const Whitening& whitened, int volumes, Separation& separation) {
    const int c = separation.found++;
    double* separating = separation.separating.row(c);
    for (int t = 0; t < volumes; ++t) {
        const double* dewhitening = whitened.dewhitening.row(t);
        for (int k = 0; k < dimension; ++k) separation.mixing.row(t)[c] += dewhitening[k] * w[k];
    }
    for (int k = 0; k < dimension; ++k) {
        const double* whitening = whitened.whitening.row(k);
        for (int t = 0; t < volumes; ++t) separating[t] += w[k] * whitening[t];
    }
}

} // namespace zn
