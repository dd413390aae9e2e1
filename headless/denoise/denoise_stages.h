#pragma once

#include "headless/denoise/denoising.h"
#include "headless/denoise/quality.h"

namespace zn::headless {

// The stages of `znica denoise` in order. Each throws Failure; what it leaves is in Denoising under its name.

/// Reads the result's record, mask and time courses, and the image's header, each checked against the result. Throws
/// Failure: kInput for inputs that do not fit, or that --force would replace; kMemory when the image does not fit into
/// the free memory.
void readInputs(Denoising& run);

/// Reads the verdicts on the components. Prints what is rejected, and which components have no label. Throws Failure
/// (kInput) as readVerdicts() and verdictsFor().
void chooseComponents(Denoising& run);

/// Reads the confounds with framewise displacement, and determines the cosines of the high-pass filter. Throws Failure
/// (kInput), also for missing values and a cut-off below two repetition times.
void readNuisance(Denoising& run);

/// Puts the columns of the regression together and derives what will be removed. Throws Failure (kInput) when nothing
/// would be left: all components rejected (unless with aggr), or as many columns as volumes.
void designRemoval(Denoising& run);

/// Opens the hidden folder of the result. Throws Failure as ResultFolder does.
void openResult(Denoising& run);

/// Reads the image, cleans it in memory and gathers the evidence. Throws Failure (kInput) for a damaged image, and when
/// no voxel of the mask can be cleaned.
void cleanImage(Denoising& run);

/// Writes image, sidecar, tables, maps and report.html, which is left out with a message when it cannot be made, and
/// gives the folder its name. Throws Failure (kOther).
void writeResult(Denoising& run, const Quality& quality);

} // namespace zn::headless
