// The fingerprint's stages at the size of a large run, and the labelling of one half-map compared with its literal
// form.
#include "fingerprint/fingerprint.h"
#include "fingerprint/heap_sort_ascending.h"
#include "fingerprint/label_clusters.h"
#include "unit/fingerprint/literal_labelling.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace {

using namespace zn;

constexpr int kComponents = 40;
constexpr int kVoxels = 200000;
constexpr int kVolumes = 400;
constexpr int kSide = 60; // voxels along x and y of the grid

OffsetMatrix<float> noise(int rows, int columns, unsigned seed) {
    OffsetMatrix<float> matrix(0, rows - 1, 0, columns - 1);
    std::mt19937 generator(seed);
    std::normal_distribution<float> normal;
    for (int i = 0; i < rows; ++i) std::generate(matrix[i], matrix[i] + columns, [&] { return normal(generator); });
    return matrix;
}

OffsetMatrix<int> gridPositions(int voxels) {
    OffsetMatrix<int> positions(0, voxels - 1, 0, 2);
    for (int v = 0; v < voxels; ++v) {
        positions[v][0] = v % kSide;
        positions[v][1] = v / kSide % kSide;
        positions[v][2] = v / kSide / kSide;
    }
    return positions;
}

// Skewness, kurtosis and spatial entropy of 40 maps of 200,000 voxels.
void BM_SpatialFeatures(benchmark::State& state) {
    const auto maps = noise(kComponents, kVoxels, 1);
    Fingerprint fingerprint(kComponents);
    for (auto _ : state) computeSpatialFeatures(maps.get(), kComponents, kVoxels, fingerprint);
}
BENCHMARK(BM_SpatialFeatures)->Unit(benchmark::kMillisecond);

// One map's values, sorted.
void BM_HeapSort(benchmark::State& state) {
    const auto map = noise(1, kVoxels, 1);
    const OffsetVector<float> work(1, kVoxels);
    for (auto _ : state) {
        std::copy(map[0], map[0] + kVoxels, work.get() + 1);
        heapSortAscending(kVoxels, work.get());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_HeapSort)->Unit(benchmark::kMillisecond);

// Autocorrelation, temporal entropy and bands of 40 time courses of 400 volumes.
void BM_TemporalFeatures(benchmark::State& state) {
    const auto raw = noise(kComponents, kVolumes, 1);
    const auto rescaled = noise(kVolumes, kComponents, 2);
    Fingerprint fingerprint(kComponents);
    for (auto _ : state) {
        computeTemporalFeatures(rescaled.get(), raw.get(), kComponents, kVolumes, 2000, fingerprint);
    }
}
BENCHMARK(BM_TemporalFeatures)->Unit(benchmark::kMillisecond);

// Degree of clustering of 40 maps of white noise, 0.6 % of the voxels above the threshold for either sign.
void BM_Clustering(benchmark::State& state) {
    const auto maps = noise(kComponents, kVoxels, 1);
    const auto positions = gridPositions(kVoxels);
    Fingerprint fingerprint(kComponents);
    for (auto _ : state) {
        computeClustering(maps.get(), positions.get(), kComponents, kVoxels, 2.5f, 10, fingerprint);
    }
}
BENCHMARK(BM_Clustering)->Unit(benchmark::kMillisecond);

// Sixteen predictors against 40 time courses.
void BM_DesignMatch(benchmark::State& state) {
    const auto courses = noise(kVolumes, kComponents, 1);
    const auto design = noise(kVolumes, kPredictors, 2);
    Fingerprint fingerprint(kComponents);
    for (auto _ : state) computeDesignMatch(design.get(), courses.get(), kVolumes, kComponents, fingerprint);
}
BENCHMARK(BM_DesignMatch)->Unit(benchmark::kMillisecond);

// 40 maps against regions of interest; the argument is their number.
void BM_TemplateMatch(benchmark::State& state) {
    const auto regions = static_cast<int>(state.range(0));
    const auto maps = noise(kComponents, kVoxels, 1);
    const auto templates = noise(regions, kVoxels, 2);
    Fingerprint fingerprint(kComponents);
    for (auto _ : state) {
        computeTemplateMatch(maps.get(), templates.get(), regions, kVoxels, kComponents, fingerprint);
    }
}
BENCHMARK(BM_TemplateMatch)->Arg(1)->Arg(16)->Arg(100)->Unit(benchmark::kMillisecond);

// A half-map of white noise on the grid, four times as many voxels as supra-threshold points; the argument is the
// number of these points.
struct HalfMap {
    explicit HalfMap(int points) : voxels(4 * points), values(noise(1, voxels, 3)), positions(gridPositions(voxels)) {
        std::vector<float> sorted(values[0], values[0] + voxels);
        const auto nth = sorted.begin() + points;
        std::nth_element(sorted.begin(), nth, sorted.end(), std::greater<>());
        threshold = *nth; // so that as many voxels as points are strictly above it
    }
    int voxels;
    OffsetMatrix<float> values;
    OffsetMatrix<int> positions;
    float threshold;
};

void BM_LabelClusters(benchmark::State& state) {
    const HalfMap map(static_cast<int>(state.range(0)));
    const OffsetVector<int> flags(0, map.voxels - 1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            labelClusters(map.values[0], map.positions.get(), map.voxels, map.threshold, 10, flags.get()));
    }
}
BENCHMARK(BM_LabelClusters)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void BM_LiteralLabelling(benchmark::State& state) {
    const HalfMap map(static_cast<int>(state.range(0)));
    std::vector<test::Voxel> voxels;
    for (int v = 0; v < map.voxels; ++v) {
        voxels.push_back({map.values[0][v], map.positions[v][0], map.positions[v][1], map.positions[v][2]});
    }
    for (auto _ : state) benchmark::DoNotOptimize(test::literalLabelling(voxels, map.threshold, 10).survivors);
}
BENCHMARK(BM_LiteralLabelling)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

} // namespace
