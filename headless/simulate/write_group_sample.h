#pragma once

#include "headless/result/result_files.h"
#include "headless/simulate/group_sample.h"

namespace zn::headless {

/// Writes a simulated study as a small BIDS dataset, and its ground truth:
///
///   sub-01/func/sub-01_task-rest_bold.nii.gz, .json    a measurement per subject, and its repetition time
///   sub-01/func/sub-01_task-rest_desc-truth_mixing.tsv the courses of its sources
///   sub-sim_task-blocks_desc-brain_mask.nii.gz         the ellipsoid
///   sub-sim_task-blocks_desc-truth_components.nii.gz   maps of the sources at the mean strength, in image units
///   desc-truth_amplitudes.tsv                          strength of every source in every subject
///   dataset_description.json, truth.json
///
/// Throws Failure (kOther).
void writeGroupSample(const ResultFiles& files, const GroupSample& group, const SimulateOptions& options);

} // namespace zn::headless
