#pragma once

#include "headless/failure/failure.h"
#include "headless/group/steps/group_options.h"
#include "headless/result/unfinished_work.h"

namespace zn::headless {

// The steps of a study, in their order. Each reads what earlier ones left in the study's folder and writes its own
// files there, the record last; a step whose record is up to date does nothing but say so, unless it is forced. All
// throw Failure. T volumes per run, m rows, K components.

/// Reads all runs once and checks that they belong together -> study.json, desc-brain_mask.nii.gz,
/// desc-mean_bold.nii.gz: the runs, their repetition time and preparation, the voxels that all of them have, and an
/// image to show maps over.
void planStudyOfGroup(const GroupOptions& options, UnfinishedWork& unfinished);

/// Throws Failure (kInput) if more components are requested than the reduction of the planned study can keep rows.
void requirePossibleComponents(const GroupOptions& options);

/// Prepares the runs of one batch and reduces them, one after another, to m rows -> reduction/batch-IofN.rows, .json.
/// Batches are independent of each other: each may be a job on another machine.
void reduceBatch(const GroupOptions& options, UnfinishedWork& unfinished);

/// Merges the batches -> reduction/group.rows, .json: the m rows of the group.
void mergeBatches(const GroupOptions& options, UnfinishedWork& unfinished);

/// Runs the plug-in on the K leading rows of the group, which stand in for volumes -> ica/, the plug-in's result;
/// desc-groupICA_components.nii.gz, the maps with mean 0 and variance 1 in the mask; desc-groupICA_metrics.tsv, .json;
/// desc-groupICA_decomposition.json. Returns kGaveUp if fewer components were found than requested.
ExitStatus separateGroup(const GroupOptions& options, UnfinishedWork& unfinished);

/// Regresses the runs on the group's maps -> dualreg/NAME_desc-dualreg_timeseries.tsv and the maps
/// NAME_desc-dualreg_stat-effect_statmap.nii.gz and -z_; NAME_desc-dualreg.json. Runs are independent of each other.
void regressRuns(const GroupOptions& options, UnfinishedWork& unfinished);

/// Gathers the runs' records and courses -> desc-groupICA_amplitudes.tsv, .json and desc-groupICA_netmats.tsv, .json:
/// every run's amplitudes, and the correlations between the components' courses, their mean and spread over runs; and,
/// unless its template is not installed, the page desc-groupICA_report.html.
void writeGroupTables(const GroupOptions& options, UnfinishedWork& unfinished);

} // namespace zn::headless
