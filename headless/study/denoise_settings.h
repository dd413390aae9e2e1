#pragma once

#include "headless/study/planned_run.h"
#include "headless/study/study_folder.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::headless {

/// The arguments of `znica denoise` for a run, without result, image and output: what makes two denoised images
/// comparable. The high-pass filter is that of the analysis. Confounds are regressed out if --columns chooses them, and
/// otherwise only show framewise displacement: all columns of fMRIPrep's table would leave nothing of the data.
std::vector<std::string> denoiseSettings(const PlannedRun& run, const StudyOptions& study);

/// The files on which the denoised image depends, the record of the result among them.
std::vector<std::filesystem::path> denoiseInputs(const PlannedRun& run, const StudyFolder& folder);

} // namespace zn::headless
