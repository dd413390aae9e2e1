#include "headless/report/mean_image.h"

#include "headless/nifti/image_writer.h"

#include <algorithm>
#include <cmath>

namespace zn::headless {

void writeMeanImage(const std::filesystem::path& file, const std::vector<float>& mean, const ImageHeader& functional) {
    ImageWriter writer(file, *functional.image, {1, NIFTI_TYPE_FLOAT32, 0.0, "mean over the volumes"});
    writer.write(mean);
    writer.close();
}

std::vector<unsigned char> greyLevels(const std::vector<float>& mean) {
    std::vector<float> positive;
    for (const float value : mean) {
        if (std::isfinite(value) && value > 0.0f) positive.push_back(value);
    }
    std::vector<unsigned char> levels(mean.size());
    if (positive.empty()) return levels;
    const auto bright = positive.begin() + static_cast<std::ptrdiff_t>((positive.size() - 1) * 995 / 1000);
    std::nth_element(positive.begin(), bright, positive.end());
    const float white = *bright;
    std::transform(mean.begin(), mean.end(), levels.begin(), [white](float value) {
        const float share = std::isfinite(value) ? std::clamp(value / white, 0.0f, 1.0f) : 0.0f;
        return static_cast<unsigned char>(std::lround(255.0f * share));
    });
    return levels;
}

} // namespace zn::headless
