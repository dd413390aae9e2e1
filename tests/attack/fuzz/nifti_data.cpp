// Fuzz target: the voxels of an image, read in each of the ways in which the program reads them.

#include "attack/fuzz/image_input.h"
#include "attack/fuzz/input.h"

#include "headless/nifti/read_volumes.h"
#include "headless/nifti/time_series.h"

#include <cmath>

namespace {

using namespace zn::headless;
using zn::test::require;

// The series is transposed and may be kept as integers, but holds the same values.
void requireSameValues(const std::vector<float>& volumes, const TimeSeries& series, int skip) {
    for (std::int64_t voxel = 0; voxel < series.voxels; ++voxel) {
        for (int t = 0; t < series.volumes; ++t) {
            const float wanted = volumes[static_cast<std::size_t>((t + skip) * series.voxels + voxel)];
            const auto at = static_cast<std::size_t>(voxel * series.volumes + t);
            const float got = series.isFloat() ? series.floats[at] : static_cast<float>(series.shorts[at]);
            require(got == wanted || (std::isnan(got) && std::isnan(wanted)), "a series has the values of its volumes");
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::imageInput({reinterpret_cast<const char*>(data), size});
    zn::test::mayRefuse([&] {
        const ImageHeader header = readImageHeader(file);
        const std::vector<float> volumes = readAllVolumes(header);
        const int skip = header.volumes > 1 ? 1 : 0;
        requireSameValues(volumes, readTimeSeries(header, skip), skip);
        zn::test::mayRefuse([&] { readMask(header); });
        zn::test::mayRefuse([&] { readLabels(header); });
    });
    return 0;
}
