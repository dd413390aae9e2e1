#pragma once

#include "headless/nifti/image_writer.h"
#include "headless/result/result_files.h"
#include "headless/simulate/sample.h"

#include <filesystem>

#include <nlohmann/json.hpp>

namespace zn::headless {

/// Writes a sample and its ground truth. All names except truth.json begin with kSampleStem:
///
///   bold.nii.gz, bold.json                     the measurement, int16, and its repetition time
///   desc-brain_mask.nii.gz                     the ellipsoid
///   desc-truth_components.nii.gz               maps of the sources (4D), in image units
///   desc-truth_mixing.tsv                      their time courses
///   desc-sources_dseg.nii.gz, .tsv             regions of the sources: label i is source i, counted from 1
///   desc-task_design.tsv                       the time courses that follow a stimulus
///   and truth.json: the settings and a list of the sources.
///
/// Throws Failure (kOther).
void writeSample(const ResultFiles& files, const Sample& sample, const SimulateOptions& options);

// Its parts, of which a simulated study has some for every subject and some only once. Each throws Failure (kOther).

void writeMeasurement(const std::filesystem::path& file, const Sample& sample, const nifti_image& grid);
void writeMask(const std::filesystem::path& file, const Brain& brain, const nifti_image& grid);
void writeSourceMaps(const std::filesystem::path& file, const Sample& sample, const nifti_image& grid);

/// `tasksOnly`: only the time courses that follow a stimulus, as a design matrix; no file if there are none.
void writeTimeCourses(const std::filesystem::path& file, const Sample& sample, bool tasksOnly);

/// The contents of truth.json.
nlohmann::ordered_json truthOf(const SimulateOptions& options, const Sample& sample);

} // namespace zn::headless
