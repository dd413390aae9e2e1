#include "headless/symmetric/voxel_part.h"

#include "headless/symmetric/start_matrix.h"

#include <algorithm>

namespace zn::headless {

namespace {

constexpr int kPart = 8;
constexpr int kVoxelsPerComponent = 200;

// Selection sampling: Knuth, The Art of Computer Programming, volume 2, section 3.4.2, algorithm S.
std::vector<int> chosenVoxels(int voxels, int count, std::mt19937& random) {
    std::vector<int> chosen;
    chosen.reserve(static_cast<std::size_t>(count));
    for (int v = 0; v < voxels; ++v) {
        const auto wanted = count - static_cast<int>(chosen.size());
        if ((voxels - v) * uniform(random) < wanted) chosen.push_back(v);
    }
    return chosen;
}

} // namespace

int partSize(const WhitenedVoxels& data) {
    const int part = std::max(data.voxels / kPart, kVoxelsPerComponent * data.dimension);
    return part > data.voxels / 2 ? data.voxels : part;
}

VoxelPart::VoxelPart(WorkerThreads& team, const WhitenedVoxels& data, int count, std::mt19937& random)
    : dimension_(data.dimension), count_(count),
      values_(static_cast<std::size_t>(dimension_) * static_cast<std::size_t>(count)) {
    const std::vector<int> chosen = chosenVoxels(data.voxels, count, random);
    team.run(dimension_, [&](int k) {
        const double* from = data.row(k);
        double* to = values_.data() + std::ptrdiff_t{k} * count_;
        std::transform(chosen.begin(), chosen.end(), to, [from](int v) { return from[v]; });
    });
}

} // namespace zn::headless
