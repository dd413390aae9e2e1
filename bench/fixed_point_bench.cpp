// One fixed-point update with each nonlinearity, compared with two plain reads of the whitened data: an update has to
// read it twice, for the product with w and for the mean of z g. The arguments are the numbers of voxels and
// dimensions.
#include "host/host_api.h"
#include "ica/fixed_point_step.h"
#include "numeric/array_owners.h"
#include "runs/plain_read.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

using namespace zn;

// White noise in place of whitened data: the same variances, the same range of y.
struct Problem {
    Problem(const benchmark::State& state)
        : voxels(static_cast<int>(state.range(0))), dimension(static_cast<int>(state.range(1))), z(dimension, voxels),
          y(1, voxels), work(1, dimension), unit(static_cast<std::size_t>(dimension), 1.0 / std::sqrt(dimension)) {
        std::mt19937 generator(1);
        std::normal_distribution<double> normal;
        std::generate(z.get(), z.get() + elements(), [&] { return normal(generator); });
    }
    long long elements() const { return static_cast<long long>(voxels) * dimension; }

    int voxels;
    int dimension;
    ZeroedBlock z, y, work;
    std::vector<double> unit;
};

void update(benchmark::State& state, Nonlinearity nonlinearity) {
    if (!bindHostApi() || !bindHostMatrixProducts()) return state.SkipWithError("no host module is loaded");
    const Problem problem(state);
    std::vector<double> w;
    for (auto _ : state) {
        w = problem.unit;
        fixedPointStep(nonlinearity, WhitenedData{problem.z.get(), problem.dimension, problem.voxels}, w.data(),
                       problem.y.get(), problem.work.get());
        benchmark::ClobberMemory();
    }
}

void BM_CubeUpdate(benchmark::State& state) {
    update(state, Nonlinearity::cube);
}
void BM_TanhUpdate(benchmark::State& state) {
    update(state, Nonlinearity::tanh);
}
void BM_GaussianUpdate(benchmark::State& state) {
    update(state, Nonlinearity::gaussian);
}

// The third argument is the number of parallel streams; the faster variant is the best this machine can do.
void BM_TwoPlainReads(benchmark::State& state) {
    const Problem problem(state);
    const auto streams = static_cast<int>(state.range(2));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::plainRead(problem.z.get(), problem.elements(), streams));
        benchmark::DoNotOptimize(bench::plainRead(problem.z.get(), problem.elements(), streams));
    }
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Args({5000, 15})->Args({60000, 30})->Args({200000, 40})->Unit(benchmark::kMicrosecond);
}
BENCHMARK(BM_CubeUpdate)->Apply(sizes);
BENCHMARK(BM_TanhUpdate)->Apply(sizes);
BENCHMARK(BM_GaussianUpdate)->Apply(sizes);
BENCHMARK(BM_TwoPlainReads)
    ->ArgsProduct({{5000}, {15}, {1, 4}})
    ->ArgsProduct({{60000}, {30}, {1, 4}})
    ->ArgsProduct({{200000}, {40}, {1, 4}})
    ->Unit(benchmark::kMicrosecond);

} // namespace
