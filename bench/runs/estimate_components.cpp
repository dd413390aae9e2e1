// estimate_components FOLDER X Y Z VOLUMES: the number of components by every criterion of the command, as one line of
// JSON. FOLDER holds mask.u8, one byte per voxel of the grid (x fastest), and series.f32, the time courses of all
// voxels of the grid one after another.
#include "headless/blas/one_blas_thread.h"
#include "headless/dimension/component_estimate.h"

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>

int main(int, char** arguments) {
    using namespace zn::headless;
    const std::string folder = arguments[1];
    const std::array<int, 3> size = {std::stoi(arguments[2]), std::stoi(arguments[3]), std::stoi(arguments[4])};
    TimeSeries series;
    series.voxels = std::int64_t{1} * size[0] * size[1] * size[2];
    series.volumes = std::stoi(arguments[5]);
    const auto values = static_cast<std::size_t>(series.voxels * series.volumes);
    series.floats = std::make_unique<float[]>(values);
    std::vector<unsigned char> mask(static_cast<std::size_t>(series.voxels));
    std::ifstream(folder + "/mask.u8", std::ios::binary)
        .read(reinterpret_cast<char*>(mask.data()), static_cast<std::streamsize>(mask.size()));
    std::ifstream data(folder + "/series.f32", std::ios::binary);
    data.read(reinterpret_cast<char*>(series.floats.get()), static_cast<std::streamsize>(sizeof(float) * values));
    if (!data) return 1;

    const auto start = std::chrono::steady_clock::now();
    const auto threads = static_cast<int>(std::thread::hardware_concurrency());
    const OneBlasThread oneThread;
    MatrixProducts products(threads);
    WorkerThreads workers(threads);
    const auto covariances = [&](const Directions& leading) {
        return seriesCovariances(series, size, mask, workers, leading);
    };
    const ComponentEstimate estimate = estimateComponents(covariances, products);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    std::printf(
        "{\"parallel\": %d, \"edge\": %s, \"mdl\": %d, \"laplace\": %d, \"threshold\": %d, \"seconds\": %.3f}\n",
        estimate.chosen(), estimate.parallel.hasEdge ? "true" : "false", estimate.byMdl, estimate.byLaplace,
        estimate.byThreshold, seconds.count());
    return 0;
}
