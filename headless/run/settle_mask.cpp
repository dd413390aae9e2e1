#include "headless/run/stages.h"

#include "headless/failure/failure.h"
#include "headless/mask/brain_mask.h"
#include "headless/mask/intensity_threshold.h"
#include "headless/mask/volumes_without_values.h"
#include "headless/nifti/image_writer.h"
#include "headless/nifti/read_volumes.h"
#include "headless/report/mean_image.h"
#include "headless/text/input_file.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace zn::headless {

namespace {

constexpr std::int64_t kMaxVoxels = 5'000'000; // limit of the plug-in

std::int64_t countOnes(const std::vector<unsigned char>& mask) {
    return std::count_if(mask.begin(), mask.end(), [](unsigned char value) { return value != 0; });
}

std::vector<unsigned char> requestedMask(const Run& run, const VoxelSummary& summary) {
    if (run.options.maskSource == MaskSource::kFile) return run.session.mask;
    if (run.options.maskSource == MaskSource::kAutomatic) return brainMask(summary.mean, run.session.grid);
    return std::vector<unsigned char>(summary.mean.size(), 1);
}

void noteMissingIntensities(Run& run, const std::vector<float>& mean) {
    if (intensityThreshold(mean)) return;
    run.notes.remark(
        {"mask-without-intensities",
         "Mask: many values of the mean image are negative, as after removal of the mean, so no brain mask "
         "can be computed from it and all voxels are used; specify one with --mask FILE."});
}

// A single such volume makes every voxel unusable.
void refuseVolumesWithoutValues(const Run& run) {
    const std::vector<int> without = volumesWithoutValues(run.session.series);
    if (without.empty() || without.size() == static_cast<std::size_t>(run.volumes)) return;
    const std::size_t others = without.size() - 1;
    refuseFile(run.functional.file, "has no finite value in volume " +
                                        std::to_string(run.options.dummyScans + without.front() + 1) +
                                        (others > 0 ? " and " + std::to_string(others) + " more" : "") + " of " +
                                        std::to_string(run.functional.volumes) + ", counted from 1; repair the image.");
}

[[noreturn]] void refuseEmpty(const Run& run, const ExcludedVoxels& excluded) {
    const RunOptions& options = run.options;
    const std::string check =
        options.maskSource == MaskSource::kFile ? "; check the image and the mask." : "; check the image.";
    const std::string file = options.functional.string();
    if (excluded.notFinite == 0) {
        throw Failure(ExitStatus::kInput, file + " does not change over time in any voxel to be analysed" + check);
    }
    refuseVolumesWithoutValues(run);
    throw Failure(ExitStatus::kInput,
                  file + " has no voxel that can be analysed: " + std::to_string(excluded.notFinite) +
                      " with non-finite values, " + std::to_string(excluded.constant) + " constant" + check);
}

[[noreturn]] void refuseTooFew(std::int64_t voxels, int volumes) {
    throw Failure(ExitStatus::kInput, std::to_string(voxels) + " voxels are fewer than the " + std::to_string(volumes) +
                                          " volumes; analyse more voxels, or omit volumes with --dummy-scans.");
}

void requireCount(std::int64_t voxels, int volumes) {
    if (voxels < volumes) refuseTooFew(voxels, volumes);
    if (voxels <= kMaxVoxels) return;
    throw Failure(ExitStatus::kInput, std::to_string(voxels) + " voxels are more than the " +
                                          std::to_string(kMaxVoxels) +
                                          " that the plug-in accepts; use a smaller mask with --mask FILE.");
}

void sayExcluded(Run& run, const ExcludedVoxels& excluded, const std::string& when) {
    if (excluded.all() == 0) return;
    run.notes.say("Mask: " + std::to_string(excluded.all()) + " voxels were excluded" + when + ": " +
                  std::to_string(excluded.notFinite) + " with non-finite values, " + std::to_string(excluded.constant) +
                  " constant.");
}

void addNotes(Run& run) {
    const MaskSource source = run.options.maskSource;
    const RunMask& mask = run.mask;
    run.notes.say("Mask: " + std::to_string(mask.count) + " of " + std::to_string(mask.voxels.size()) + " voxels, " +
                  (source == MaskSource::kFile        ? "from the given mask."
                   : source == MaskSource::kAutomatic ? "from a brain mask computed from the mean image."
                                                      : "no mask was requested."));
    sayExcluded(run, mask.excluded, "");
    sayExcluded(run, mask.excludedWhenPrepared, " after the preparation");
}

void writeMaskImage(const Run& run) {
    ImageWriter writer((*run.files)[ResultFile::kMask], *run.functional.image,
                       {1, NIFTI_TYPE_UINT8, 0.0, "voxels analysed"});
    writer.write(run.mask.voxels);
    writer.close();
}

// Here, because the preparation may remove the mean.
void writeMean(Run& run, const VoxelSummary& summary) {
    run.mean = summary.mean;
    for (std::size_t v = 0; v < run.mean.size(); ++v) {
        if (summary.finite[v] == 0) run.mean[v] = std::nanf("");
    }
    writeMeanImage((*run.files)[ResultFile::kMean], run.mean, run.functional);
    if (!run.options.control.report) run.mean.clear();
}

} // namespace

std::int64_t expectedVoxels(const Run& run) {
    const RunOptions& options = run.options;
    if (options.maskSource == MaskSource::kFile) return countOnes(run.session.mask);
    if (options.maskSource == MaskSource::kNone) return run.functional.voxels();
    return countOnes(brainMask(readVolume(run.functional, options.dummyScans), run.functional.size));
}

void requireVoxelsForVolumes(const Run& run, std::int64_t expected) {
    // The automatic mask of the first volume is an estimate; the other two can only lose voxels.
    if (run.options.maskSource != MaskSource::kAutomatic && expected < run.volumes) refuseTooFew(expected, run.volumes);
}

void settleMask(Run& run) {
    WorkerThreads threads(MatrixProducts::threadsFor(run.options.control.threads));
    const VoxelSummary summary = summariseVoxels(run.session.series, threads);
    run.session.series.sums = {}; // they are in the summary
    if (run.files) writeMean(run, summary);
    RunMask& mask = run.mask;
    mask.voxels = requestedMask(run, summary);
    mask.excluded = removeUnusable(summary, mask.voxels);
    mask.count = countOnes(mask.voxels);
    if (mask.count == 0) refuseEmpty(run, mask.excluded);
    if (run.options.maskSource == MaskSource::kAutomatic) noteMissingIntensities(run, summary.mean);
}

void useMask(Run& run) {
    RunMask& mask = run.mask;
    requireCount(mask.count, run.volumes);
    if (run.options.maskSource != MaskSource::kNone || mask.count < run.functional.voxels()) {
        run.session.mask = mask.voxels;
        run.session.dialog.texts[1] = "mask.msk";
    }
    addNotes(run);
    requireMemory(run, mask.count);
    writeMaskImage(run);
}

} // namespace zn::headless
