#pragma once

#include "headless/group/steps/group_study.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The group's component maps.
struct GroupMaps {
    int count = 0;
    std::vector<float> values; ///< [component][voxel in the mask], mean 0 and variance 1
    std::string checksum;      ///< of the values
};

/// Their files in the study's folder.
std::filesystem::path groupMapsFile(const std::filesystem::path& study);
std::filesystem::path groupRecordFile(const std::filesystem::path& study);

/// Reads maps on the study's grid and scales them to mean 0 and variance 1 over the mask. Throws Failure (kInput).
GroupMaps readMaps(const std::filesystem::path& file, const GroupStudy& study);

/// The maps that `znica group ica` made of the study's reduction as it is now. Throws Failure (kInput) when there are
/// none.
GroupMaps readGroupMaps(const GroupStudy& study);

/// Writes maps as one 4D image, 0 outside the mask. Throws Failure (kOther).
///
///   values   [map][voxel in the mask]
void writeMaps(const std::filesystem::path& file, const GroupStudy& study, const std::vector<float>& values,
               const char* description);

} // namespace zn::headless
