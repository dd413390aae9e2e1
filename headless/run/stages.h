#pragma once

#include "headless/failure/failure.h"
#include "headless/run/run.h"

#include <cstdint>

namespace zn::headless {

// The stages of a run in the order of the work, each in a file of its own name. Each throws Failure, having said
// nothing yet; what it leaves behind stands in Run under its name.

/// Reads everything about a run but the functional data, which take the time and the memory: the image's header, the
/// repetition time, and mask, regions and design matrix from their files, each checked against the image. Settles the
/// number of volumes and, where that decides it, the range of eigenvalues; makes the session with the dialog's fields
/// and the prompts' answers; notes what was found.
///
/// Throws Failure (kInput), also when --force would replace a folder that holds a file the run reads: links count where
/// they lie and where they lead.
void readInputs(Run& run);

/// Predicts the memory of a run from the voxels that it is likely to analyse, notes it, and refuses what will not fit.
/// The budget is that of --memory, else what the machine has free now. For --mask auto one volume is read. Throws
/// Failure: kInput for fewer voxels than volumes, kMemory for a prediction beyond the budget.
void checkBudget(Run& run);

/// Predicts again for the voxels that the data turned out to have; throws as above.
void requireMemory(Run& run, std::int64_t voxels);

/// How many voxels a run is going to analyse, before its data are read: those of the mask; of the brain in its first
/// volume for --mask auto, for which that one volume is read; else all.
std::int64_t expectedVoxels(const Run& run);

/// Refuses a given mask, or an image taken whole, with fewer voxels than volumes before the data are read. Throws
/// Failure (kInput).
void requireVoxelsForVolumes(const Run& run, std::int64_t expected);

/// Settles the mask from the data: makes it for --mask auto, excludes what cannot be analysed, and gives it to the
/// session, where it stays absent for --mask none if every voxel can be analysed. Notes the numbers and writes the mask
/// as an image of zeros and ones. Throws Failure: kInput when no voxel remains, or a number of voxels that the plug-in
/// would refuse (fewer than volumes, more than 5,000,000); kMemory beyond the budget; kOther when the image cannot be
/// written.
void settleMask(Run& run);

/// For --components auto: estimates the number of components from the eigenvalues, settles the range with it, notes
/// each criterion's answer and writes the criteria as a table. Else nothing.
///
/// The table has one row per number of components, from 1: components, eigenvalue (of that rank), mdl and laplace;
/// "n/a" where a criterion was not evaluated.
void settleComponents(Run& run);

/// Runs the plug-in on the session, which then holds its maps, and writes them as an image with their time courses
/// beside it while the plug-in waits; the log file begins with the notes. Throws Failure as runPlugin() does, and
/// (kOther) when a file cannot be written.
void separate(Run& run);

/// For --repeats R above 1: runs the plug-in again until there are R runs, the k-th one (from 0) with the first seed +
/// k, and compares what they found. The session comes with the maps of the first run and leaves with them; the maps of
/// later runs are kept in memory for the comparison alone (8 bytes per voxel and component) and their files are
/// removed. Their lines are added to the log file. A run that finds nothing counts as not converged; every other
/// failure is thrown.
void repeatSeparation(Run& run);

/// Writes the files of a run whose maps are complete: the table of parameters, the record, the mean image and, with a
/// design matrix, its table; then report.html, which without an installed template is left out with a message. Gives
/// the folder its name and prints the summary. Returns kDone, or kGaveUp when components are missing; throws Failure
/// (kOther), and then the wanted folder is as it was.
ExitStatus writeResult(Run& run);

} // namespace zn::headless
