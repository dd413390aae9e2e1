#include "headless/nifti/read_volumes.h"

#include "headless/failure/failure.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zn::headless {

namespace {

constexpr float kMaxExact = 16777216.0f; // 2^24: up to here single precision represents every whole number

} // namespace

std::vector<float> readVolume(const ImageHeader& header, int index) {
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    for (int volume = 0; volume <= index; ++volume) stream.read(stored.data());
    std::vector<float> values(static_cast<std::size_t>(header.voxels()));
    toFloat(*header.image, stored.data(), header.voxels(), values.data());
    return values;
}

std::vector<float> readAllVolumes(const ImageHeader& header) {
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    std::vector<float> values(static_cast<std::size_t>(header.voxels() * header.volumes));
    for (int t = 0; t < header.volumes; ++t) {
        stream.read(stored.data());
        toFloat(*header.image, stored.data(), header.voxels(), values.data() + t * header.voxels());
    }
    return values;
}

void forEachVolume(const ImageHeader& header, const std::function<void(const std::vector<float>&)>& use) {
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    std::vector<float> values(static_cast<std::size_t>(header.voxels()));
    for (int t = 0; t < header.volumes; ++t) {
        stream.read(stored.data());
        toFloat(*header.image, stored.data(), header.voxels(), values.data());
        use(values);
    }
}

std::vector<float> readSingleVolume(const ImageHeader& header) {
    if (header.volumes != 1) {
        throw Failure(ExitStatus::kInput, header.file.string() + " holds " + std::to_string(header.volumes) +
                                              " volumes where a single one is expected.");
    }
    return readAllVolumes(header);
}

std::vector<unsigned char> readMask(const ImageHeader& header) {
    const std::vector<float> values = readSingleVolume(header);
    std::vector<unsigned char> mask(values.size());
    std::transform(values.begin(), values.end(), mask.begin(),
                   [](float value) { return static_cast<unsigned char>(value != 0.0f && !std::isnan(value)); });
    if (std::find(mask.begin(), mask.end(), 1) == mask.end()) {
        throw Failure(ExitStatus::kInput,
                      header.file.string() + " selects no voxels: it is zero everywhere; use another mask.");
    }
    return mask;
}

std::map<std::int32_t, std::vector<std::int64_t>> readLabels(const ImageHeader& header) {
    const std::vector<float> values = readSingleVolume(header);
    std::map<std::int32_t, std::vector<std::int64_t>> labels;
    for (std::size_t voxel = 0; voxel < values.size(); ++voxel) {
        const float value = values[voxel];
        if (value == 0.0f) continue;
        if (!(std::fabs(value) <= kMaxExact) || value != std::nearbyint(value)) {
            throw Failure(ExitStatus::kInput,
                          header.file.string() + " is not a label image: it holds values that are not whole numbers.");
        }
        labels[static_cast<std::int32_t>(value)].push_back(static_cast<std::int64_t>(voxel));
    }
    if (labels.empty())
        throw Failure(ExitStatus::kInput, header.file.string() + " contains no labels: it is zero everywhere.");
    return labels;
}

} // namespace zn::headless
