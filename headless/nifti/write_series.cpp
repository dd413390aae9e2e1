#include "headless/nifti/write_series.h"

#include "headless/nifti/image_writer.h"

#include <algorithm>
#include <future>
#include <utility>
#include <vector>

namespace zn::headless {

namespace {

constexpr int kTogether = 16; // volumes per cache line

// The volumes from `first` on: [count][voxels].
void gatherVolumes(const float* series, std::int64_t voxels, int volumes, int first, int count, float* gathered) {
    constexpr std::int64_t kBlock = 512; // voxels
    for (std::int64_t start = 0; start < voxels; start += kBlock) {
        const std::int64_t end = std::min(voxels, start + kBlock);
        for (int c = 0; c < count; ++c) {
            float* volume = gathered + c * voxels;
            for (std::int64_t v = start; v < end; ++v) volume[v] = series[v * volumes + first + c];
        }
    }
}

} // namespace

void writeSeries(const std::filesystem::path& file, const float* series, int volumes, const ImageHeader& like,
                 double secondsPerVolume, int threads) {
    const std::int64_t voxels = like.voxels();
    ImageWriter writer(file, *like.image,
                       {volumes, NIFTI_TYPE_FLOAT32, secondsPerVolume, like.image->descrip, threads});
    const auto room = static_cast<std::size_t>(voxels * std::min(volumes, kTogether));
    std::vector<float> next(room);
    std::vector<float> current(room);
    std::future<void> gathering; // its destructor waits for the work, so it is declared after the arrays
    const auto gather = [&](int first) {
        const int count = std::min(kTogether, volumes - first);
        gathering =
            std::async([=, target = next.data()] { gatherVolumes(series, voxels, volumes, first, count, target); });
    };
    gather(0);
    for (int first = 0; first < volumes; first += kTogether) {
        gathering.get();
        std::swap(next, current);
        if (first + kTogether < volumes) gather(first + kTogether);
        for (int c = 0; c < std::min(kTogether, volumes - first); ++c) {
            writer.write(std::span<const float>(current).subspan(static_cast<std::size_t>(c * voxels),
                                                                 static_cast<std::size_t>(voxels)));
        }
    }
    writer.close();
}

} // namespace zn::headless
