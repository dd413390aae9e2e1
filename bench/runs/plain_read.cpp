#include "runs/plain_read.h"

#include "runs/widest_vectors.h"

#include <cassert>

namespace zn::bench {

namespace {

constexpr int kLanes = 64; // sums that are accumulated in parallel
constexpr int kQuarters = 4;

ZN_WIDEST_VECTORS void addOneStream(const double* __restrict block, long long elements, double* __restrict sums) {
    for (long long i = 0; i + kLanes <= elements; i += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane) sums[lane] += block[i + lane];
    }
}

ZN_WIDEST_VECTORS void addFourStreams(const double* __restrict block, long long elements, double* __restrict sums) {
    constexpr int kShare = kLanes / kQuarters;
    const long long quarter = elements / kQuarters;
    const double* second = block + quarter;
    const double* third = second + quarter;
    const double* fourth = third + quarter;
    for (long long i = 0; i + kShare <= quarter; i += kShare) {
        for (int lane = 0; lane < kShare; ++lane) sums[lane] += block[i + lane];
        for (int lane = 0; lane < kShare; ++lane) sums[kShare + lane] += second[i + lane];
        for (int lane = 0; lane < kShare; ++lane) sums[2 * kShare + lane] += third[i + lane];
        for (int lane = 0; lane < kShare; ++lane) sums[3 * kShare + lane] += fourth[i + lane];
    }
}

} // namespace

double plainRead(const double* block, long long elements, int streams) {
    assert(streams == 1 || streams == kQuarters);
    double sums[kLanes] = {};
    streams == 1 ? addOneStream(block, elements, sums) : addFourStreams(block, elements, sums);
    double total = 0.0;
    for (const double sum : sums) total += sum;
    return total;
}

} // namespace zn::bench
