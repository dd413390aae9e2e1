#pragma once

#include "headless/failure/failure.h"
#include "headless/simulate/simulate_options.h"

namespace zn::headless {

/// `znica simulate`: writes a sample and its truth into a folder. All names begin with "sub-sim_task-blocks_":
///
///   bold.nii.gz, bold.json                     the measurement, int16, and its repetition time
///   desc-brain_mask.nii.gz                     the ellipsoid
///   desc-truth_components.nii.gz               the sources' maps (4D), in units of the image
///   desc-truth_mixing.tsv                      their time courses
///   desc-sources_dseg.nii.gz, .tsv             regions of the sources: label i is source i, counted from 1
///   desc-task_design.tsv                       the time courses that follow a stimulus
///   and truth.json: the settings and a list of the sources.
///
/// Throws Failure (kOther), and then the folder is as it was.
ExitStatus simulateCommand(const SimulateOptions& options);

} // namespace zn::headless
