#include "ica/contrast/contrast.h"

#include "ica/contrast/contrast_kernels.h"
#include "numeric/array_owners.h"
#include "numeric/instruction_set.h"

#include <algorithm>

namespace zn {

namespace {

constexpr int kBlock = 1024; // voxels; a multiple of kPartialSums, 8 kB of y and as much of each row of z

double addUp(const double* partial) {
    return ((partial[0] + partial[1]) + (partial[2] + partial[3])) +
           ((partial[4] + partial[5]) + (partial[6] + partial[7]));
}

static_assert(kBlock % kPartialSums == 0 && kPartialSums == 8);

} // namespace

void tanhInPlace(double* x, int count) {
    static const auto kernel = ZN_PICK_KERNEL(tanhOnlyKernel);
    kernel(x, count);
}

void expInPlace(double* x, int count) {
    static const auto kernel = ZN_PICK_KERNEL(expOnlyKernel);
    kernel(x, count);
}

void logCoshInPlace(double* x, int count) {
    static const auto kernel = ZN_PICK_KERNEL(logCoshKernel);
    kernel(x, count);
}

double applyContrast(Nonlinearity nonlinearity, double* y, int count) {
    static const auto tanh = ZN_PICK_KERNEL(tanhKernel);
    static const auto gaussian = ZN_PICK_KERNEL(gaussianKernel);
    static const auto cube = ZN_PICK_KERNEL(cubeKernel);
    double slopes[kPartialSums] = {};
    (nonlinearity == Nonlinearity::tanh       ? tanh
     : nonlinearity == Nonlinearity::gaussian ? gaussian
                                              : cube)(y, count, slopes);
    return addUp(slopes);
}

void sumContrast(Nonlinearity nonlinearity, const double* z, int dimension, int voxels, double* y, double* sums,
                 double* slope) {
    static const auto tanh = ZN_PICK_KERNEL(tanhKernel);
    static const auto gaussian = ZN_PICK_KERNEL(gaussianKernel);
    static const auto addProducts = ZN_PICK_KERNEL(productKernel);
    const auto apply = nonlinearity == Nonlinearity::tanh ? tanh : gaussian;

    double slopes[kPartialSums] = {};
    const ZeroedBlock partial(dimension, kPartialSums);
    for (int first = 0; first < voxels; first += kBlock) {
        const int count = std::min(kBlock, voxels - first);
        apply(y + first, count, slopes);
        const double* row = z + first;
        const double* nextBlock = count == kBlock ? row + kBlock : row;
        for (int k = 0; k < dimension; ++k) {
            // Hardware prefetching stops where a block of a row ends.
            const double* next = k + 1 < dimension ? row + voxels : nextBlock;
            addProducts(row, next, y + first, count, partial.row(k));
            row = next;
        }
    }
    for (int k = 0; k < dimension; ++k) sums[k] = addUp(partial.row(k));
    *slope = addUp(slopes);
}

} // namespace zn
