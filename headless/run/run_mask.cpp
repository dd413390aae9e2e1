#include "headless/run/run_mask.h"

#include "headless/failure/failure.h"
#include "headless/mask/brain_mask.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/single_volume.h"

#include <algorithm>
#include <string>

namespace zn::headless {

namespace {

std::int64_t countOnes(const std::vector<unsigned char>& mask) {
    return std::count_if(mask.begin(), mask.end(), [](unsigned char value) { return value != 0; });
}

std::vector<unsigned char> askedFor(const RunOptions& options, const VoxelSummary& summary, const Session& session) {
    if (options.maskSource == MaskSource::kFile) return session.mask;
    if (options.maskSource == MaskSource::kAutomatic) return brainMask(summary.mean, session.grid);
    return std::vector<unsigned char>(summary.mean.size(), 1);
}

[[noreturn]] void refuseEmpty(const RunOptions& options, const LeftVoxels& left) {
    const std::string check =
        options.maskSource == MaskSource::kFile ? "; check the image and the mask." : "; check the image.";
    const std::string file = options.functional.string();
    if (left.notFinite == 0) {
        throw Failure(ExitStatus::kInput, file + " does not change over time in any voxel to be analysed" + check);
    }
    throw Failure(ExitStatus::kInput, file + " has no voxel that can be analysed: " + std::to_string(left.notFinite) +
                                          " hold values that are not finite, " + std::to_string(left.constant) +
                                          " never change" + check);
}

constexpr std::int64_t kMostVoxels = 5'000'000; // of the plug-in

[[noreturn]] void refuseTooFew(std::int64_t voxels, int volumes) {
    throw Failure(ExitStatus::kInput, std::to_string(voxels) + " voxels are fewer than the " + std::to_string(volumes) +
                                          " volumes; analyse more voxels, or leave volumes out with --dummy-scans.");
}

void requireCount(std::int64_t voxels, int volumes) {
    if (voxels < volumes) refuseTooFew(voxels, volumes);
    if (voxels <= kMostVoxels) return;
    throw Failure(ExitStatus::kInput, std::to_string(voxels) + " voxels are more than the " +
                                          std::to_string(kMostVoxels) +
                                          " that the plug-in takes; use a smaller mask with --mask FILE.");
}

} // namespace

std::int64_t expectedVoxels(const RunOptions& options, const ImageHeader& functional, const Session& session) {
    if (options.maskSource == MaskSource::kFile) return countOnes(session.mask);
    if (options.maskSource == MaskSource::kNone) return functional.voxels();
    return countOnes(brainMask(readVolume(functional, options.dummyScans), functional.size));
}

void requireVoxelsForVolumes(const RunOptions& options, std::int64_t expectedVoxels, int volumes) {
    // The automatic mask of the first volume is a guess; the other two can only lose voxels.
    if (options.maskSource != MaskSource::kAutomatic && expectedVoxels < volumes) refuseTooFew(expectedVoxels, volumes);
}

RunMask settleMask(const RunOptions& options, Session& session) {
    const VoxelSummary summary = summariseVoxels(session.series);
    RunMask mask;
    mask.voxels = askedFor(options, summary, session);
    mask.left = removeUnusable(summary, mask.voxels);
    mask.count = countOnes(mask.voxels);
    if (mask.count == 0) refuseEmpty(options, mask.left);
    requireCount(mask.count, session.series.volumes);
    if (options.maskSource == MaskSource::kNone && mask.left.all() == 0) return mask;
    session.mask = mask.voxels;
    session.dialog.texts[1] = "mask.msk";
    return mask;
}

std::vector<std::string> maskNotes(const RunOptions& options, const RunMask& mask) {
    const char* source = options.maskSource == MaskSource::kFile        ? "by the given mask"
                         : options.maskSource == MaskSource::kAutomatic ? "by a brain mask from the mean image"
                                                                        : "no mask was asked for";
    std::vector<std::string> notes = {"Mask: " + std::to_string(mask.count) + " of " +
                                      std::to_string(mask.voxels.size()) + " voxels, " + source + "."};
    if (mask.left.all() > 0) {
        notes.push_back("Mask: " + std::to_string(mask.left.all()) +
                        " voxels left it: " + std::to_string(mask.left.notFinite) +
                        " hold values that are not finite, " + std::to_string(mask.left.constant) + " never change.");
    }
    return notes;
}

void writeMaskImage(const std::filesystem::path& file, const RunMask& mask, const ImageHeader& functional) {
    ImageWriter writer(file, *functional.image, {1, NIFTI_TYPE_UINT8, 0.0, "voxels analysed"});
    writer.write(mask.voxels);
    writer.close();
}

} // namespace zn::headless
