#include "headless/run/stages.h"

#include "headless/batch/batch_job.h"
#include "headless/blas/one_blas_thread.h"
#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/memory/peak_prediction.h"
#include "headless/memory/touched_pages.h"
#include "headless/nifti/time_series.h"
#include "headless/prepare/smoothing_passes.h"
#include "headless/run/smoothing_width.h"
#include "headless/text/byte_sizes.h"

#include <algorithm>
#include <string>
#include <vector>

namespace zn::headless {

namespace {

std::optional<std::int64_t> budgetOf(const RunOptions& options) {
    if (!options.memoryGib) return usableMemoryBytes();
    return static_cast<std::int64_t>(std::min(*options.memoryGib, 1e9) * kBytesPerGib);
}

// The courses that are written while the data are read and smoothed, if only those of the mask are needed.
std::vector<unsigned char> writtenCourses(const Run& run) {
    const PreparationOptions& options = run.options.preparation;
    const double width = options.smoothIfNeeded ? automaticWidth(run.functional) : options.smoothMm;
    const auto passes = smoothingPasses(run.functional.size, sigmaInVoxels(width, run.functional), run.session.mask);
    return passes.empty() ? run.session.mask : passes.front().wanted;
}

bool keptAsShort(const Run& run) {
    return staysShort(*run.functional.image) && !run.options.preparation.any();
}

std::int64_t seriesBytes(const Run& run) {
    const std::int64_t perVoxel = std::int64_t{keptAsShort(run) ? 2 : 4} * run.volumes;
    if (neededVoxels(run).empty()) return perVoxel * run.functional.voxels();
    return touchedBytes(writtenCourses(run), perVoxel);
}

std::int64_t predictedBytes(const Run& run, std::int64_t voxels) {
    RunSize size;
    size.gridVoxels = run.functional.voxels();
    size.voxels = voxels;
    size.volumes = run.volumes;
    size.components = run.eigenvalues.count();
    size.seriesBytes = run.seriesBytes;
    size.storedBytes = keptAsShort(run) ? 0 : run.functional.image->nbyper;
    size.regions = static_cast<int>(run.session.regions.size());
    size.repeats = run.options.control.repeats;
    size.threads = MatrixProducts::threadsFor(run.options.control.threads);
    size.symmetric = run.options.approach == Approach::kSymmetric;
    return predictedPeakBytes(size);
}

bool isLimitOfJob(const Run& run) {
    return !run.options.memoryGib && run.budgetBytes && run.budgetBytes == batchJobMemoryBytes();
}

std::string budgetText(const Run& run) {
    if (!run.budgetBytes) return "the amount of free memory is unknown";
    const char* who = run.options.memoryGib ? " are allowed by --memory"
                      : isLimitOfJob(run)   ? " are granted to this batch job"
                                            : " are free";
    return gibText(*run.budgetBytes) + who;
}

// Beside the data a run maps the BLAS's buffers, and for every thread a stack and an arena of the allocator. Measured
// with 1 to 4 threads, with 100 MiB to spare.
constexpr std::int64_t kMappedBytes = 192 << 20;
constexpr std::int64_t kMappedBytesPerThread = 96 << 20;

// Memory that it cannot map makes the BLAS wait for ever.
void requireAddressSpace(const Run& run) {
    const auto left = addressSpaceLeftBytes();
    const int own = MatrixProducts::threadsFor(run.options.control.threads);
    const int threads = blasThreadsAtStart() + own;
    const std::int64_t needed = run.predictedBytes + kMappedBytes + threads * kMappedBytesPerThread;
    if (!left || needed <= *left) return;
    throw Failure(ExitStatus::kMemory, run.functional.file.string() + " needs about " + gibText(needed) +
                                           " of address space, but the limit (ulimit -v) leaves " + gibText(*left) +
                                           "; raise or remove that limit.");
}

void requireBudget(const Run& run) {
    if (!run.budgetBytes || run.predictedBytes <= *run.budgetBytes) return;
    throw Failure(ExitStatus::kMemory, run.functional.file.string() + " needs about " + gibText(run.predictedBytes) +
                                           " of memory, but " + budgetText(run) +
                                           (isLimitOfJob(run) ? "; request more memory for the job."
                                                              : "; use a smaller mask or fewer components, or allow "
                                                                "more with --memory GIB."));
}

} // namespace

void checkBudget(Run& run) {
    run.budgetBytes = budgetOf(run.options);
    const std::int64_t voxels = expectedVoxels(run);
    requireVoxelsForVolumes(run, voxels);
    run.seriesBytes = seriesBytes(run);
    run.predictedBytes = predictedBytes(run, voxels);
    run.notes.say("Memory: about " + gibText(run.predictedBytes) + " at the peak, for " + std::to_string(voxels) +
                  " voxels; " + budgetText(run) + ".");
    requireAddressSpace(run); // once: later, the data are part of what is mapped
    requireBudget(run);
}

void requireMemory(Run& run, std::int64_t voxels) {
    run.predictedBytes = predictedBytes(run, voxels);
    requireBudget(run);
}

} // namespace zn::headless
