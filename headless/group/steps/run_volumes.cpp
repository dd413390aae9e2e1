#include "headless/group/steps/run_volumes.h"

#include "headless/compression/checksum.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

#include <cmath>
#include <span>

namespace zn::headless {

std::string readRunVolumes(const ImageHeader& header, int dummyScans,
                           const std::function<void(int, const std::vector<float>&)>& use) {
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    std::vector<float> volume(static_cast<std::size_t>(header.voxels()));
    Checksum checksum;
    for (int number = 0; number < header.volumes; ++number) {
        stream.read(stored.data());
        checksum.add(stored);
        if (number < dummyScans) continue;
        toFloat(*header.image, stored.data(), header.voxels(), volume.data());
        use(number - dummyScans, volume);
    }
    return checksum.text();
}

RunVoxels readRunVoxels(const ImageHeader& header, int dummyScans) {
    const auto voxels = static_cast<std::size_t>(header.voxels());
    std::vector<double> sums(voxels);
    std::vector<float> first;
    RunVoxels result;
    result.usable.resize(voxels); // 1: has varied so far
    result.checksum = readRunVolumes(header, dummyScans, [&](int number, const std::vector<float>& volume) {
        if (number == 0) first = volume;
        for (std::size_t v = 0; v < voxels; ++v) {
            sums[v] += static_cast<double>(volume[v]);
            result.usable[v] |= static_cast<unsigned char>(volume[v] != first[v]);
        }
    });
    for (std::size_t v = 0; v < voxels; ++v) {
        const double mean = sums[v] / (header.volumes - dummyScans);
        const bool finite = std::isfinite(mean); // if and only if all values are
        result.mean.push_back(finite ? static_cast<float>(mean) : 0.0f);
        if (!finite) result.usable[v] = 0;
    }
    return result;
}

} // namespace zn::headless
