#pragma once

#include "headless/group/steps/group_options.h"
#include "headless/nifti/image_header.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// Where the dual regressions lie in the study's folder, unless their runs have folders elsewhere.
constexpr char kDualRegression[] = "dualreg";

/// A run of a planned study.
struct GroupRun {
    std::string name;
    std::filesystem::path image; ///< absolute
    int volumes = 0;             ///< without the dummy scans
    std::string checksum;        ///< of the stored values, by which a changed or duplicated image is recognised
    std::filesystem::path results = kDualRegression; ///< folder of its courses and maps, relative to the study's
};

/// What `znica group plan` settles for all later steps. It lies in the study's folder:
///
///   study.json                    everything but the mask
///   desc-brain_mask.nii.gz        the voxels that all runs have
struct GroupStudy {
    std::filesystem::path folder;
    std::vector<GroupRun> runs;
    double secondsPerVolume = 0.0;
    int dummyScans = 0;
    PreparationOptions preparation;
    ImageHeader grid;                 ///< of the mask
    std::vector<unsigned char> mask;  ///< [voxel of the grid]
    std::vector<std::int64_t> inside; ///< the voxels in the mask, ascending
    std::string id;                   ///< changes with anything above

    std::int64_t voxels() const { return static_cast<std::int64_t>(inside.size()); }
    /// The rows that the group's reduction keeps; see rowsToKeep().
    int rows() const;
};

/// The two files of a study.
std::filesystem::path studyFile(const std::filesystem::path& folder);
std::filesystem::path studyMask(const std::filesystem::path& folder);

/// The text of study.json.
///
///   basis   what the plan was made from; see StepRecord
std::string studyText(const GroupStudy& study, const std::string& basis);

/// The runs of a planned study alone; none without a plan, or when it is damaged.
std::vector<GroupRun> plannedRuns(const std::filesystem::path& folder);

/// Reads a planned study. Throws Failure (kInput) when there is none or its files are damaged.
GroupStudy readStudy(const std::filesystem::path& folder);

} // namespace zn::headless
