#include "headless/nifti/time_series.h"

#include "headless/nifti/transpose_volumes.h"
#include "headless/nifti/volume_stream.h"
#include "headless/nifti/voxel_values.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <future>
#include <utility>
#include <vector>

#ifdef __linux__
#include <sys/mman.h>
#endif

namespace zn::headless {

namespace {

constexpr int kCacheLine = 64;

#ifdef __wasm__
constexpr auto kWhileReading = std::launch::deferred; // there are no threads
#else
constexpr auto kWhileReading = std::launch::async | std::launch::deferred;
#endif

template <class Value> std::unique_ptr<Value[]> room(std::int64_t values) {
    return std::unique_ptr<Value[]>(new Value[static_cast<std::size_t>(values)]); // not initialised
}

// An array of which only parts are written takes up few pages only if these are small: huge ones, which some systems
// use by default, would fill the gaps. A hint; nothing depends on it but memory.
void useSmallPages([[maybe_unused]] void* array, [[maybe_unused]] std::int64_t bytes) {
#ifdef __linux__
    constexpr std::uintptr_t kPage = 4096;
    const std::uintptr_t before = (kPage - reinterpret_cast<std::uintptr_t>(array) % kPage) % kPage;
    const auto size = static_cast<std::uintptr_t>(bytes);
    if (before < size) madvise(static_cast<std::byte*>(array) + before, size - before, MADV_NOHUGEPAGE);
#endif
}

template <class Read, class Value>
void transpose(const Read* volumes, int first, int count, Value* values, TimeSeries& series) {
    if (series.inside.empty()) {
        transposeVolumes(volumes, count, series.voxels, values, series.volumes, first);
    } else {
        transposeInside(volumes, count, series.voxels, series.inside.data(), values, series.volumes, first,
                        series.sums.data());
    }
}

// readVolume(target) stores the next volume as Read in target. Volumes already read are transposed, and converted to
// Value, while the next ones are inflated: neither waits for the other, unless the machine has no thread to spare.
template <class Value, class Read = Value, class ReadVolume>
std::unique_ptr<Value[]> readTransposed(TimeSeries& series, ReadVolume readVolume) {
    const std::int64_t voxels = series.voxels;
    const int volumes = series.volumes;
    const int together = std::min(volumes, kCacheLine / static_cast<int>(sizeof(Value)));
    auto values = room<Value>(voxels * volumes);
    if (!series.inside.empty()) useSmallPages(values.get(), voxels * volumes * std::int64_t{sizeof(Value)});
    auto arriving = room<Read>(voxels * together);
    auto arrived = together < volumes ? room<Read>(voxels * together) : nullptr;
    std::future<void> transposing; // its destructor waits for the work, so it is declared after the arrays

    for (int first = 0; first < volumes; first += together) {
        const int count = std::min(together, volumes - first);
        for (int c = 0; c < count; ++c) readVolume(arriving.get() + c * voxels);
        if (transposing.valid()) transposing.get();
        std::swap(arriving, arrived);
        transposing = std::async(kWhileReading, [source = arrived.get(), first, count, target = values.get(), &series] {
            transpose(source, first, count, target, series);
        });
    }
    if (transposing.valid()) transposing.get();
    return values;
}

} // namespace

bool staysShort(const nifti_image& image) {
    return image.datatype == NIFTI_TYPE_INT16 && !isScaled(image);
}

TimeSeries readTimeSeries(const ImageHeader& header, int skip, bool asFloat, std::vector<unsigned char> inside) {
    TimeSeries result;
    result.voxels = header.voxels();
    result.volumes = header.volumes - skip;
    result.inside = std::move(inside);
    result.sums.resize(result.inside.size());
    VolumeStream stream(header);
    std::vector<std::byte> stored(static_cast<std::size_t>(stream.bytesPerVolume()));
    for (int volume = 0; volume < skip; ++volume) stream.read(stored.data());
    const auto readShorts = [&](std::int16_t* volume) { stream.read(reinterpret_cast<std::byte*>(volume)); };
    if (staysShort(*header.image) && asFloat) {
        result.floats = readTransposed<float, std::int16_t>(result, readShorts);
    } else if (staysShort(*header.image)) {
        result.shorts = readTransposed<std::int16_t>(result, readShorts);
    } else {
        result.floats = readTransposed<float>(result, [&](float* volume) {
            stream.read(stored.data());
            toFloat(*header.image, stored.data(), header.voxels(), volume);
        });
    }
    return result;
}

} // namespace zn::headless
