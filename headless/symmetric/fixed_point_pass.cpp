#include "headless/symmetric/fixed_point_pass.h"

#include "headless/blas/block_product.h"
#include "ica/contrast/contrast.h"

#include <algorithm>

namespace zn::headless {

FixedPointPass::FixedPointPass(WorkerThreads& team, zn::Nonlinearity nonlinearity, const WhitenedVoxels& data)
    : team_(team), nonlinearity_(nonlinearity), data_(data), chunks_(data) {
    const auto n = static_cast<std::size_t>(data.dimension);
    sums_.assign(static_cast<std::size_t>(chunks_.count()), {std::vector<double>(n * n), std::vector<double>(n)});
    blocks_.assign(static_cast<std::size_t>(team.threads()), std::vector<double>(n * kBlockVoxels));
}

void FixedPointPass::addChunk(const VoxelChunk& chunk, const UnmixingMatrix& w, std::vector<double>& y,
                              Sums& sums) const {
    const int n = data_.dimension;
    std::fill(sums.slopes.begin(), sums.slopes.end(), 0.0);
    forEachBlock(chunk, [&](int first, int count) {
        const double* z = data_.z + first;
        blockProduct({w.data(), n}, {z, data_.voxels}, n, count, n, false, y.data(), kBlockVoxels);
        for (int k = 0; k < n; ++k) {
            double* row = y.data() + std::ptrdiff_t{k} * kBlockVoxels;
            sums.slopes[static_cast<std::size_t>(k)] += applyContrast(nonlinearity_, row, count);
        }
        blockProduct({y.data(), kBlockVoxels}, {z, data_.voxels, true}, n, n, count, first != chunk.first,
                     sums.products.data(), n);
    });
}

void FixedPointPass::update(UnmixingMatrix& w) {
    chunks_.share(team_, [&](const VoxelChunk& chunk, int worker) {
        addChunk(chunk, w, blocks_[static_cast<std::size_t>(worker)], sums_[static_cast<std::size_t>(chunk.number)]);
    });
    const auto n = static_cast<std::size_t>(data_.dimension);
    Sums& total = sums_.front();
    for (std::size_t chunk = 1; chunk < sums_.size(); ++chunk) {
        for (std::size_t i = 0; i < n * n; ++i) total.products[i] += sums_[chunk].products[i];
        for (std::size_t k = 0; k < n; ++k) total.slopes[k] += sums_[chunk].slopes[k];
    }
    for (std::size_t i = 0; i < n * n; ++i) {
        w.data()[i] = (total.products[i] - total.slopes[i / n] * w.data()[i]) / data_.voxels;
    }
}

} // namespace zn::headless
