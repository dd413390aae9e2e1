// Fuzz target: the header of an image.

#include "attack/fuzz/image_input.h"
#include "attack/fuzz/input.h"

#include "headless/nifti/image_header.h"

#include <cmath>
#include <limits>

namespace {

using zn::headless::ImageHeader;
using zn::test::require;

void requirePromises(const ImageHeader& header) {
    require(header.volumes >= 1, "an image has a volume");
    for (const int extent : header.size) require(extent >= 1, "an axis has a voxel");
    require(header.voxels() <= std::numeric_limits<std::int32_t>::max(), "a grid can be addressed");
    for (const auto& row : header.affine) {
        for (const double value : row) require(std::isfinite(value), "an affine is finite");
    }
    const double seconds = header.secondsPerVolume.value_or(1.0);
    require(std::isfinite(seconds) && seconds > 0.0, "a repetition time is a positive number");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto file = zn::test::imageInput({reinterpret_cast<const char*>(data), size});
    zn::test::mayRefuse([&] { requirePromises(zn::headless::readImageHeader(file)); });
    return 0;
}
