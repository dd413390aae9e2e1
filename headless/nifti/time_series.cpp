#include "headless/nifti/time_series.h"

#include "headless/nifti/transpose_volumes.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

#include <algorithm>
#include <vector>

namespace zn {

namespace {

constexpr int kCacheLine = 64;

// readVolume(target) leaves the next volume as Value in target.
template <class Value, class ReadVolume>
std::unique_ptr<Value[]> readTransposed(const ImageHeader& header, ReadVolume readVolume) {
    const std::int64_t voxels = header.voxels();
    const int together = std::min(header.volumes, kCacheLine / static_cast<int>(sizeof(Value)));
    auto series = std::make_unique_for_overwrite<Value[]>(static_cast<std::size_t>(voxels * header.volumes));
    auto some = std::make_unique_for_overwrite<Value[]>(static_cast<std::size_t>(voxels * together));

    for (int first = 0; first < header.volumes; first += together) {
        const int count = std::min(together, header.volumes - first);
        for (int c = 0; c < count; ++c) readVolume(some.get() + c * voxels);
        transposeVolumes(some.get(), count, voxels, series.get(), header.volumes, first);
    }
    return series;
}

} // namespace

TimeSeries readTimeSeries(const ImageHeader& header) {
    TimeSeries result;
    result.voxels = header.voxels();
    result.volumes = header.volumes;
    VolumeStream stream(header);
    if (header.image->datatype == NIFTI_TYPE_INT16 && !isScaled(*header.image)) {
        result.shorts = readTransposed<std::int16_t>(
            header, [&](std::int16_t* volume) { stream.read(reinterpret_cast<std::byte*>(volume)); });
    } else {
        std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
        result.floats = readTransposed<float>(header, [&](float* volume) {
            stream.read(stored.data());
            toFloat(*header.image, stored.data(), header.voxels(), volume);
        });
    }
    return result;
}

} // namespace zn
