#pragma once

#include "headless/host/session.h"
#include "headless/mask/voxel_summary.h"
#include "headless/nifti/image_header.h"
#include "headless/run/run_options.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace zn::headless {

/// The voxels that a run analyses.
struct RunMask {
    std::vector<unsigned char> voxels; ///< one byte a voxel of the grid
    std::int64_t count = 0;
    LeftVoxels left; ///< out of those that were asked for
};

/// How many voxels a run is going to analyse, before its data are read: those of the mask; of the brain in its first
/// volume for --mask auto, which that one volume is read for; else all.
std::int64_t expectedVoxels(const RunOptions& options, const ImageHeader& functional, const Session& session);

/// Refuses a given mask, or an image taken whole, with fewer voxels than volumes before the data are read.
void requireVoxelsForVolumes(const RunOptions& options, std::int64_t expectedVoxels, int volumes);

/// Settles the mask from the data: makes it for --mask auto, takes out what cannot be analysed, and gives it to the
/// session, where it stays absent for --mask none if every voxel can be analysed. Throws Failure (kInput) when no voxel
/// is left, and for a number of voxels that the plug-in would refuse: fewer than volumes, more than 5,000,000.
RunMask settleMask(const RunOptions& options, Session& session);

/// "2336 of 8640 voxels are analysed ...", with what left the mask.
std::vector<std::string> maskNotes(const RunOptions& options, const RunMask& mask);

/// Writes the mask as an image of zeros and ones on the functional grid. Throws Failure (kOther).
void writeMaskImage(const std::filesystem::path& file, const RunMask& mask, const ImageHeader& functional);

} // namespace zn::headless
