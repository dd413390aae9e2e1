#pragma once

#include "headless/result/result_files.h"
#include "headless/simulate/sample.h"

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

} // namespace zn::headless
