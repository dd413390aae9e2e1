#pragma once

#include <filesystem>
#include <vector>

namespace zn::headless {

/// The image over which a study's maps are shown, in the study's folder.
std::filesystem::path groupMeanFile(const std::filesystem::path& study);

/// The mean of the runs' mean images. Each is first divided by its mean within its own mask, because scanners differ in
/// their units; where that is not positive, as with data without a mean, the run is left out.
class GroupMean {
public:
    ///   mean   [voxel of the grid]
    ///   mask   [voxel of the grid]
    void add(const std::vector<float>& mean, const std::vector<bool>& mask);

    /// [voxel of the grid]; empty when no run could be added.
    std::vector<float> values() const;

private:
    std::vector<double> sum_;
    int runs_ = 0;
};

} // namespace zn::headless
