#include "headless/nifti/label_image.h"

#include "headless/failure/failure.h"
#include "headless/nifti/single_volume.h"

#include <cmath>

namespace zn::headless {

namespace {

constexpr float kMostExact = 16777216.0f; // 2^24: up to here single precision holds every whole number

} // namespace

std::map<std::int32_t, std::vector<std::int64_t>> readLabels(const ImageHeader& header) {
    const std::vector<float> values = readSingleVolume(header);
    std::map<std::int32_t, std::vector<std::int64_t>> labels;
    for (std::size_t voxel = 0; voxel < values.size(); ++voxel) {
        const float value = values[voxel];
        if (value == 0.0f) continue;
        if (!(std::fabs(value) <= kMostExact) || value != std::nearbyint(value)) {
            throw Failure(ExitStatus::kInput,
                          header.file.string() + " is no label image: it holds values that are not whole numbers.");
        }
        labels[static_cast<std::int32_t>(value)].push_back(static_cast<std::int64_t>(voxel));
    }
    if (labels.empty())
        throw Failure(ExitStatus::kInput, header.file.string() + " holds no label: it is zero everywhere.");
    return labels;
}

} // namespace zn::headless
