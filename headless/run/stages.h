#pragma once

#include "headless/failure/failure.h"
#include "headless/run/run.h"

#include <cstdint>
#include <vector>

namespace zn::headless {

// The stages of a run in order, each in a file of the same name. Each throws Failure without printing anything; its
// results are in Run under its name.

/// Reads everything except the functional data, which cost time and memory: the image's header, the repetition time,
/// and mask, regions, design matrix and confounds from their files, each checked against the image. Determines the
/// number of volumes and, where it follows from that, the range of eigenvalues; creates the session with the fields of
/// the dialog and the answers to the prompts; notes what was found.
///
/// Throws Failure (kInput), also when --force would replace a folder that contains an input file of the run; for a link
/// both its own place and its target count.
void readInputs(Run& run);

/// Predicts the memory of a run from the expected number of voxels, notes it, and refuses what will not fit. The budget
/// is that of --memory, otherwise the free memory of the machine. For --mask auto one volume is read. Throws Failure:
/// kInput for fewer voxels than volumes, kMemory for a prediction beyond the budget.
void checkBudget(Run& run);

/// Repeats the prediction for the actual number of voxels; throws as above.
void requireMemory(Run& run, std::int64_t voxels);

/// Expected number of voxels before the data are read: those of the mask; for --mask auto those of the brain in the
/// first volume, which is read for this; otherwise all.
std::int64_t expectedVoxels(const Run& run);

/// Refuses a given mask, or an image without a mask, with fewer voxels than volumes before the data are read. Throws
/// Failure (kInput).
void requireVoxelsForVolumes(const Run& run, std::int64_t expected);

/// Checks the options of the preparation against the image and determines the number of cosines that --high-pass
/// removes. Throws Failure (kInput) for a width of more than 10 voxels or a cut-off below two repetition times.
void checkPreparation(Run& run);

/// The number of dimensions that the preparation leaves of the volumes.
int preparedDimensions(const Run& run);

/// The voxels whose values are kept in memory, one byte per voxel; empty: all of them, because no mask was given or
/// because regions may have voxels outside it.
std::vector<unsigned char> neededVoxels(const Run& run);

/// Determines the mask from the data as read: computes it for --mask auto and excludes voxels that cannot be analysed.
/// Writes the mean image into the result, if one is open, NaN where any volume is not finite. Throws Failure: kInput
/// when no voxel remains, kOther when the image cannot be written.
void settleMask(Run& run);

/// Smooths, filters and scales the time courses inside the mask, as the options say, notes it, and excludes voxels that
/// are constant or no longer finite afterwards. Values outside the mask are undefined then. Throws Failure (kInput)
/// when no voxel remains.
void prepareSeries(Run& run);

/// Passes the mask to the session, which gets none for --mask none if every voxel can be analysed. Notes the numbers
/// and writes the mask as an image of zeros and ones. Throws Failure: kInput when the plug-in would refuse the number
/// of voxels (fewer than volumes, more than 5,000,000); kMemory beyond the budget; kOther when the image cannot be
/// written.
void useMask(Run& run);

/// For --components auto: estimates the number of components from the eigenvalues, sets the range accordingly, notes
/// each criterion's estimate and what makes the number uncertain, and writes the eigenvalues and two of the criteria as
/// a table. Otherwise does nothing.
///
/// The table has one row per number of components, from 1: components, eigenvalue (of that rank), mdl and laplace;
/// "n/a" where a criterion was not evaluated.
void settleComponents(Run& run);

/// Runs the plug-in on the session, which then holds its maps, and writes their time courses; the log file begins with
/// the notes. Starts writing the maps as an image on a thread of its own, unless the run has only one. Throws Failure
/// as runPlugin() does, and (kOther) when a file cannot be written.
void separate(Run& run);

/// Waits until the image of the maps is complete. Until then the session's maps must stay. Throws Failure (kOther) when
/// it cannot be written. Does nothing the second time.
void finishMaps(Run& run);

/// For --repeats R above 1: runs the plug-in again until there are R runs, the k-th one (from 0) with the first seed +
/// k, and compares what they found. On entry and on return the session holds the maps of the first run; the maps of
/// later runs are kept in memory only for the comparison (8 bytes per voxel and component), and their files are
/// removed. The centrotype of each cluster is written as a map. Their lines are appended to the log file. A run that
/// finds nothing counts as not converged; any other failure is thrown.
void repeatSeparation(Run& run);

/// Measures the components beyond the plug-in's parameters: time courses in units of the data, explained variance, the
/// moments of their maps, the most similar confound; and the variance over time that the eigenvalues kept hold.
void measureComponents(Run& run);

/// Writes the files of a run whose maps are complete: the table of parameters, the record and, with a design matrix,
/// its table; then report.html, which is omitted with a message if it cannot be made: the analysis is complete
/// without it. Gives the folder its name and prints the summary. Returns kDone, or kGaveUp when components are missing;
/// throws Failure (kOther), in which case the wanted folder is as it was.
ExitStatus writeResult(Run& run);

} // namespace zn::headless
