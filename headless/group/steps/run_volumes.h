#pragma once

#include "headless/nifti/image_header.h"

#include <functional>
#include <string>
#include <vector>

namespace zn::headless {

/// Reads a run volume by volume and calls use(t, volume) for t = 0, 1, ... after the dummy scans. Returns the checksum
/// of all stored values. Throws Failure (kInput).
std::string readRunVolumes(const ImageHeader& header, int dummyScans,
                           const std::function<void(int, const std::vector<float>&)>& use);

/// What the plan of a study needs to know of a run.
struct RunVoxels {
    std::vector<float> mean;           ///< [voxel of the grid]
    std::vector<unsigned char> usable; ///< 1: all values are finite and they are not all the same
    std::string checksum;              ///< see above
};

/// One pass over the run; the memory does not depend on the number of volumes.
RunVoxels readRunVoxels(const ImageHeader& header, int dummyScans);

} // namespace zn::headless
