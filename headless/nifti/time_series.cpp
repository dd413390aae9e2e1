#include "headless/nifti/time_series.h"

#include "headless/nifti/transpose_volumes.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

#include <algorithm>
#include <future>
#include <utility>
#include <vector>

namespace zn::headless {

namespace {

constexpr int kCacheLine = 64;

#ifdef __wasm__
constexpr auto kWhileReading = std::launch::deferred; // there are no threads
#else
constexpr auto kWhileReading = std::launch::async | std::launch::deferred;
#endif

// readVolume(target) stores the next volume as Value in target. Volumes already read are transposed while the next ones
// are inflated: neither waits for the other, unless the machine has no thread to spare.
template <class Value, class ReadVolume>
std::unique_ptr<Value[]> readTransposed(std::int64_t voxels, int volumes, ReadVolume readVolume) {
    const int together = std::min(volumes, kCacheLine / static_cast<int>(sizeof(Value)));
    const auto room = [](std::int64_t values) {
        return std::unique_ptr<Value[]>(new Value[static_cast<std::size_t>(values)]); // not initialised
    };
    auto series = room(voxels * volumes);
    auto arriving = room(voxels * together);
    auto arrived = together < volumes ? room(voxels * together) : nullptr;
    std::future<void> transposing; // its destructor waits for the work, so it is declared after the arrays

    for (int first = 0; first < volumes; first += together) {
        const int count = std::min(together, volumes - first);
        for (int c = 0; c < count; ++c) readVolume(arriving.get() + c * voxels);
        if (transposing.valid()) transposing.get();
        std::swap(arriving, arrived);
        transposing =
            std::async(kWhileReading, [source = arrived.get(), target = series.get(), count, voxels, volumes, first] {
                transposeVolumes(source, count, voxels, target, volumes, first);
            });
    }
    if (transposing.valid()) transposing.get();
    return series;
}

} // namespace

bool staysShort(const nifti_image& image) {
    return image.datatype == NIFTI_TYPE_INT16 && !isScaled(image);
}

TimeSeries readTimeSeries(const ImageHeader& header, int skip, bool asFloat) {
    TimeSeries result;
    result.voxels = header.voxels();
    result.volumes = header.volumes - skip;
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    for (int volume = 0; volume < skip; ++volume) stream.read(stored.data());
    if (staysShort(*header.image) && !asFloat) {
        result.shorts = readTransposed<std::int16_t>(result.voxels, result.volumes, [&](std::int16_t* volume) {
            stream.read(reinterpret_cast<std::byte*>(volume));
        });
    } else {
        result.floats = readTransposed<float>(result.voxels, result.volumes, [&](float* volume) {
            stream.read(stored.data());
            toFloat(*header.image, stored.data(), header.voxels(), volume);
        });
    }
    return result;
}

} // namespace zn::headless
