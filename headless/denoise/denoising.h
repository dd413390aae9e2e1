#pragma once

#include "headless/confounds/confound_table.h"
#include "headless/denoise/carpet.h"
#include "headless/denoise/clean_courses.h"
#include "headless/denoise/course_columns.h"
#include "headless/denoise/denoise_options.h"
#include "headless/denoise/removal.h"
#include "headless/denoise/verdicts.h"
#include "headless/nifti/image_header.h"
#include "headless/nifti/time_series.h"
#include "headless/result/result_files.h"
#include "headless/result/result_folder.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zn::headless {

/// The rows of the carpet plots before and after; [row][analysed volume], in standard deviations before.
struct Carpet {
    std::vector<std::int64_t> voxels;
    std::vector<float> before;
    std::vector<float> after;
};

/// The state of one `znica denoise`: each stage of the driver fills the members below its name.
struct Denoising {
    Denoising(const DenoiseOptions& given, UnfinishedWork& work) : options(given), unfinished(work) {}

    const DenoiseOptions& options;
    UnfinishedWork& unfinished;
    std::vector<std::string> notes; ///< sentences for the user, in the order in which they were printed
    void say(const std::string& note);

    // readInputs
    std::optional<ResultFiles> result; ///< of the components
    int dummyScans = 0;
    double secondsPerVolume = 0.0; ///< of the analysis
    ImageHeader functional;
    std::vector<unsigned char> mask; ///< one byte per voxel of the grid
    CourseColumns courses;

    // chooseComponents
    std::vector<Verdict> verdicts; ///< [component]

    // readNuisance
    std::optional<Confounds> confounds;   ///< to regress out
    std::optional<std::vector<float>> fd; ///< framewise displacement, [analysed volume]; NaN: missing
    int cosines = 0;                      ///< of the high-pass filter

    // designRemoval
    Removal removal;

    // openResult
    std::optional<ResultFolder> folder;
    std::optional<ResultFiles> files; ///< of the denoised image

    // cleanImage
    TimeSeries series; ///< cleaned, with the dummy scans
    std::vector<VoxelKind> kinds;
    Carpet carpet;
    Cleaning cleaning;

    int volumes() const { return functional.volumes - dummyScans; } ///< analysed
    int rejectedCount() const;
    std::int64_t count(VoxelKind kind) const;
    /// Per cent of the variance over time in the mask that the columns from `first` up to `end` explain.
    double removedPercent(int first, int end) const;
};

} // namespace zn::headless
