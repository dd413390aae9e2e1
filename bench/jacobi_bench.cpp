// Eigen-decomposition of a temporal covariance, ours compared with the same algorithm written out literally; the
// argument is the number of volumes. The counter `bits` is a hash of all eigenvalues and eigenvectors: equal bits,
// equal hash.
//
// The literal form takes minutes at 1200 volumes; choose with --benchmark_filter=/400
#include "ica/jacobi/jacobi.h"
#include "runs/simulated_run.h"
#include "unit/ica/jacobi/literal_jacobi.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <map>

namespace {

using namespace zn;

struct Eigen {
    explicit Eigen(int n) : values(1, n), vectors(1, n, 1, n) {}
    OffsetVector<double> values;
    OffsetMatrix<double> vectors;
    int rotations = 0;
};

OffsetMatrix<double> covarianceOf(const ZeroedBlock& x, int voxels, int volumes) {
    OffsetMatrix<double> covariance(1, volumes, 1, volumes);
    covariance.fill(0.0);
    for (int v = 0; v < voxels; ++v) {
        const double* row = x.row(v) - 1;
        for (int i = 1; i <= volumes; ++i) {
            for (int j = 1; j <= volumes; ++j) covariance[i][j] += row[i] * row[j] / voxels;
        }
    }
    return covariance;
}

// Of a simulated run with three voxels per volume; made once for each number of volumes.
const OffsetMatrix<double>& simulatedCovariance(int volumes) {
    static std::map<int, OffsetMatrix<double>> made;
    if (!made.contains(volumes)) {
        const int voxels = 3 * volumes;
        const auto run = bench::simulateRun(voxels, volumes, 20, /*seed=*/1);
        made[volumes] = covarianceOf(run.data, voxels, volumes);
    }
    return made[volumes];
}

// FNV-1a, in the 52 bits that a counter of the benchmark holds exactly.
double hashOf(const Eigen& eigen, int n) {
    unsigned long long hash = 14695981039346656037ULL;
    const auto add = [&](const double* values) {
        for (int i = 1; i <= n; ++i) {
            unsigned long long bits = 0;
            std::memcpy(&bits, &values[i], sizeof bits);
            hash = (hash ^ bits) * 1099511628211ULL;
        }
    };
    add(eigen.values.get());
    for (int row = 1; row <= n; ++row) add(eigen.vectors[row]);
    return static_cast<double>(hash >> 12);
}

template <class Decompose> void timeDecomposition(benchmark::State& state, Decompose decompose) {
    const auto n = static_cast<int>(state.range(0));
    const auto& covariance = simulatedCovariance(n);
    OffsetMatrix<double> work(1, n, 1, n);
    Eigen eigen(n);
    for (auto _ : state) { // the copy is T x T, the work T x T x T
        for (int i = 1; i <= n; ++i) std::copy(&covariance[i][1], &covariance[i][n] + 1, &work[i][1]);
        decompose(work.get(), n, eigen);
    }
    state.counters["bits"] = hashOf(eigen, n);
    state.counters["rotations"] = eigen.rotations;
}

void BM_Jacobi(benchmark::State& state) {
    timeDecomposition(state, [](double** a, int n, Eigen& eigen) {
        jacobi(a, n, eigen.values.get(), eigen.vectors.get(), &eigen.rotations);
    });
}
BENCHMARK(BM_Jacobi)->Arg(100)->Arg(400)->Arg(800)->Arg(1200)->Unit(benchmark::kMillisecond);

void BM_LiteralJacobi(benchmark::State& state) {
    timeDecomposition(state, [](double** a, int n, Eigen& eigen) {
        test::literalJacobi(a, n, eigen.values.get(), eigen.vectors.get());
    });
}
BENCHMARK(BM_LiteralJacobi)->Arg(100)->Arg(400)->Arg(800)->Arg(1200)->Unit(benchmark::kMillisecond);

} // namespace
