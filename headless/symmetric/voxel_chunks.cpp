#include "headless/symmetric/voxel_chunks.h"

#include <algorithm>
#include <atomic>

namespace zn::headless {

namespace {

constexpr int kMostChunks = 64;
constexpr int kVoxelsPerRow = 8; // n x n numbers per 8 n voxels: an eighth of the n numbers per voxel

int chunkSize(const WhitenedVoxels& data) {
    const int wanted = std::max(data.voxels / kMostChunks + 1, kVoxelsPerRow * data.dimension);
    return (wanted + kBlockVoxels - 1) / kBlockVoxels * kBlockVoxels;
}

} // namespace

VoxelChunks::VoxelChunks(const WhitenedVoxels& data)
    : voxels_(data.voxels), size_(chunkSize(data)), count_((voxels_ + size_ - 1) / size_) {}

VoxelChunk VoxelChunks::operator[](int number) const {
    const int first = number * size_;
    return {number, first, std::min(size_, voxels_ - first)};
}

void VoxelChunks::share(WorkerThreads& team, const std::function<void(const VoxelChunk&, int)>& body) const {
    std::atomic<int> next = 0;
    team.run(std::min(team.threads(), count_), [&](int worker) {
        for (int number = next++; number < count_; number = next++) body((*this)[number], worker);
    });
}

} // namespace zn::headless
