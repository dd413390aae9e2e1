#include "headless/denoise/denoise_stages.h"

#include "headless/blas/matrix_products.h"
#include "headless/denoise/voxel_kinds.h"
#include "headless/failure/failure.h"
#include "headless/result/old_foreign_work.h"
#include "headless/result/result_names.h"

#include <cstdio>
#include <string>

namespace zn::headless {

namespace {

constexpr int kCarpetRows = 400; // about the height of the plot on the page

} // namespace

void openResult(Denoising& run) {
    run.folder.emplace(run.unfinished, run.options.out, ResultKind::kDenoised, run.options.force);
    const std::string note = noteOnOldForeignWorkFor(run.options.out);
    if (!note.empty() && !run.options.quiet) std::fprintf(stderr, "znica: %s\n", note.c_str());
    run.files.emplace(run.folder->path(), resultStem(run.options.functional));
    run.files->requireShortNames(ResultPlace::kDenoised);
}

void cleanImage(Denoising& run) {
    run.series = readTimeSeries(run.functional, 0, true);
    const AnalysedCourses courses{run.series.floats.get(), run.series.voxels, run.functional.volumes, run.dummyScans};
    MatrixProducts products(MatrixProducts::threadsFor(run.options.threads));
    WorkerThreads& threads = products.team();

    run.kinds = voxelKinds(courses, run.mask, threads);
    if (run.count(VoxelKind::kInMask) == 0) {
        throw Failure(ExitStatus::kInput, run.functional.file.string() +
                                              " has no voxel in the mask that changes and is finite in every volume; "
                                              "name the image that was analysed, or another version of it.");
    }
    const auto spoiled = run.count(VoxelKind::kNotFinite);
    if (spoiled > 0) {
        run.say("Voxels: " + std::to_string(spoiled) + " with non-finite values copied unchanged.");
    }
    run.carpet.voxels = carpetVoxels(courses, run.kinds, kCarpetRows, threads);
    const CarpetScale scale = carpetScale(courses, run.carpet.voxels);
    run.carpet.before = carpetOf(courses, run.carpet.voxels, scale);
    run.cleaning = cleanCourses(courses, run.kinds, run.removal, threads);
    run.carpet.after = carpetOf(courses, run.carpet.voxels, scale);
}

} // namespace zn::headless
