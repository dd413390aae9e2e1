#include "headless/group/steps/group_mean.h"

#include <cmath>

namespace zn::headless {

std::filesystem::path groupMeanFile(const std::filesystem::path& study) {
    return study / "desc-mean_bold.nii.gz";
}

void GroupMean::add(const std::vector<float>& mean, const std::vector<bool>& mask) {
    double sum = 0.0;
    double voxels = 0.0;
    for (std::size_t v = 0; v < mean.size(); ++v) {
        if (!mask[v]) continue;
        sum += double{mean[v]};
        ++voxels;
    }
    if (!(sum > 0.0)) return;
    sum_.resize(mean.size());
    for (std::size_t v = 0; v < mean.size(); ++v) {
        if (std::isfinite(mean[v])) sum_[v] += double{mean[v]} * voxels / sum;
    }
    ++runs_;
}

std::vector<float> GroupMean::values() const {
    std::vector<float> values;
    values.reserve(sum_.size());
    for (const double sum : sum_) values.push_back(static_cast<float>(sum / runs_));
    return values;
}

} // namespace zn::headless
