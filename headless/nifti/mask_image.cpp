#include "headless/nifti/mask_image.h"

#include "headless/failure/failure.h"
#include "headless/nifti/single_volume.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

std::vector<unsigned char> readMask(const ImageHeader& header) {
    const std::vector<float> values = readSingleVolume(header);
    std::vector<unsigned char> mask(values.size());
    std::transform(values.begin(), values.end(), mask.begin(),
                   [](float value) { return static_cast<unsigned char>(value != 0.0f && !std::isnan(value)); });
    if (std::find(mask.begin(), mask.end(), 1) == mask.end()) {
        throw Failure(ExitStatus::kInput,
                      header.file.string() + " selects no voxel: it is zero everywhere; use another mask.");
    }
    return mask;
}

} // namespace zn::headless
