// machine_bounds
//
// The best that one core of this machine can do: the bounds that the stages of a run are compared with.
//
//   product_flops          floating-point operations per second of the host's matrix product
//   rotated_pairs          pairs of elements per second through one rotation, both rows in the first-level cache
//   read_bytes_<size>MB    bytes per second of repeated plain reads of a block of that size
#include "numeric/array_owners.h"
#include "runs/plain_read.h"
#include "runs/run_clock.h"
#include "runs/run_result.h"
#include "runs/widest_vectors.h"

#include <algorithm>
#include <cblas.h>
#include <string>

namespace {

using namespace zn;
using zn::bench::RunClock;

constexpr int kRepetitions = 7;

// Seconds of the fastest repetition; the first one warms up.
template <class Work> double fastest(Work work) {
    double best = 1e300;
    for (int repetition = 0; repetition <= kRepetitions; ++repetition) {
        const RunClock clock;
        work();
        if (repetition > 0) best = std::min(best, clock.seconds());
    }
    return best;
}

double productFlops() {
    constexpr int kOrder = 1200;
    ZeroedBlock a(kOrder, kOrder), b(kOrder, kOrder), r(kOrder, kOrder);
    std::fill_n(a.get(), kOrder * kOrder, 0.5);
    std::fill_n(b.get(), kOrder * kOrder, 0.25);
    const double seconds = fastest([&] {
        cblas_dgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, kOrder, kOrder, kOrder, 1.0, a.get(), kOrder, b.get(),
                    kOrder, 0.0, r.get(), kOrder);
    });
    return 2.0 * kOrder * kOrder * kOrder / seconds;
}

ZN_WIDEST_VECTORS void rotatePairs(double* __restrict x, double* __restrict y, int pairs, double s, double tau) {
    for (int j = 0; j < pairs; ++j) {
        const double g = x[j];
        const double h = y[j];
        x[j] = g - s * (h + g * tau);
        y[j] = h + s * (g - h * tau);
    }
}

double rotatedPairs() {
    constexpr int kPairs = 1024;
    constexpr int kTimes = 10000;
    ZeroedBlock rows(2, kPairs);
    std::fill_n(rows.get(), 2 * kPairs, 1.0);
    const double seconds = fastest([&] {
        for (int time = 0; time < kTimes; ++time) rotatePairs(rows.row(0), rows.row(1), kPairs, 0.6, 0.6 / 1.8);
    });
    return static_cast<double>(kPairs) * kTimes / seconds;
}

double readBytes(long long megabytes) {
    const long long elements = megabytes * 1000000 / 8;
    ZeroedBlock block(1, elements);
    std::fill_n(block.get(), elements, 1.0);
    const long long times = std::max(1LL, 2000 / megabytes);
    double sum = 0.0; // not printed; the compiler cannot drop the calls, because plainRead is in another file
    double best = 1e300;
    for (const int streams : {1, 4}) {
        best = std::min(best, fastest([&] {
                            for (long long i = 0; i < times; ++i) {
                                sum += zn::bench::plainRead(block.get(), elements, streams);
                            }
                        }));
    }
    return static_cast<double>(megabytes * times) * 1e6 / best;
}

} // namespace

int main() {
    zn::bench::RunResult result;
    result.add("product_flops", productFlops());
    result.add("rotated_pairs", rotatedPairs());
    for (const int megabytes : {1, 8, 64, 256, 1000}) {
        result.add(("read_bytes_" + std::to_string(megabytes) + "MB").c_str(), readBytes(megabytes));
    }
    result.print();
    return 0;
}
