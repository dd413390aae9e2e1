#include "headless/nifti/single_volume.h"

#include "headless/failure/failure.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

namespace zn::headless {

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

std::vector<float> readSingleVolume(const ImageHeader& header) {
    if (header.volumes != 1) {
        throw Failure(ExitStatus::kInput, header.file.string() + " holds " + std::to_string(header.volumes) +
                                              " volumes where a single one is needed.");
    }
    return readAllVolumes(header);
}

} // namespace zn::headless
