#pragma once

#include "headless/run/run.h"

#include <cstdint>

namespace zn::headless {

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

} // namespace zn::headless
