#include "headless/symmetric/component_moments.h"

#include "headless/blas/block_product.h"
#include "headless/symmetric/voxel_chunks.h"
#include "ica/contrast/contrast.h"

#include <numeric>

namespace zn::headless {

namespace {

constexpr double kNormalLogCosh = 0.374567207491438; // E{ln cosh v} of a standard normal v, by quadrature

struct Sums {
    std::vector<double> cubes;
    std::vector<double> logCosh;
};

double sumOfCubes(const double* y, int count) {
    return std::accumulate(y, y + count, 0.0, [](double sum, double value) { return sum + value * value * value; });
}

void addBlock(double* y, int count, std::size_t k, Sums& sums) {
    sums.cubes[k] += sumOfCubes(y, count);
    logCoshInPlace(y, count);
    sums.logCosh[k] += std::accumulate(y, y + count, 0.0);
}

} // namespace

double ComponentMoments::totalNegentropy() const {
    return std::accumulate(negentropy.begin(), negentropy.end(), 0.0);
}

ComponentMoments componentMoments(WorkerThreads& team, const WhitenedVoxels& data, const UnmixingMatrix& w) {
    const int n = data.dimension;
    const auto rows = static_cast<std::size_t>(n);
    const VoxelChunks chunks(data);
    const Sums none{std::vector<double>(rows), std::vector<double>(rows)};
    std::vector<Sums> sums(static_cast<std::size_t>(chunks.count()), none);
    std::vector<std::vector<double>> blocks(static_cast<std::size_t>(team.threads()),
                                            std::vector<double>(rows * kBlockVoxels));
    chunks.share(team, [&](const VoxelChunk& chunk, int worker) {
        double* y = blocks[static_cast<std::size_t>(worker)].data();
        forEachBlock(chunk, [&](int first, int count) {
            blockProduct({w.data(), n}, {data.z + first, data.voxels}, n, count, n, false, y, kBlockVoxels);
            for (std::size_t k = 0; k < rows; ++k) {
                addBlock(y + k * kBlockVoxels, count, k, sums[static_cast<std::size_t>(chunk.number)]);
            }
        });
    });

    ComponentMoments moments{std::vector<double>(rows), std::vector<double>(rows)};
    for (std::size_t k = 0; k < rows; ++k) {
        double logCosh = 0.0;
        for (const Sums& part : sums) {
            moments.thirdMoment[k] += part.cubes[k] / data.voxels;
            logCosh += part.logCosh[k] / data.voxels;
        }
        moments.negentropy[k] = (logCosh - kNormalLogCosh) * (logCosh - kNormalLogCosh);
    }
    return moments;
}

} // namespace zn::headless
