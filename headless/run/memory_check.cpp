#include "headless/run/memory_check.h"

#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/memory/peak_prediction.h"
#include "headless/nifti/time_series.h"

#include <algorithm>
#include <cstdio>

namespace zn::headless {

namespace {

constexpr double kGib = 1073741824.0;

std::string gibText(std::int64_t bytes) {
    char text[64];
    std::snprintf(text, sizeof text, "%.3g GiB", static_cast<double>(bytes) / kGib);
    return text;
}

std::optional<std::int64_t> budgetOf(const RunOptions& options) {
    if (!options.memoryGib) return availableMemoryBytes();
    return static_cast<std::int64_t>(std::min(*options.memoryGib, 1e9) * kGib);
}

// Until the eigenvalues are known, as many components as --components auto can answer.
int componentsOf(const RunOptions& options, int volumes) {
    return options.componentCount == ComponentCount::kEstimated ? std::max(1, volumes / 4) : options.components();
}

} // namespace

MemoryCheck::MemoryCheck(const RunOptions& options, const ImageHeader& functional, const Session& session)
    : options_(options), functional_(functional), regions_(static_cast<int>(session.regions.size())),
      budget_(budgetOf(options)) {}

std::int64_t MemoryCheck::predictedBytes(std::int64_t voxels) const {
    RunSize size;
    size.gridVoxels = functional_.voxels();
    size.voxels = voxels;
    size.volumes = functional_.volumes - options_.dummyScans;
    size.components = componentsOf(options_, size.volumes);
    const bool shorts = staysShort(*functional_.image);
    size.bytesPerValue = shorts ? 2 : 4;
    size.storedBytes = shorts ? 0 : functional_.image->nbyper;
    size.regions = regions_;
    size.repeats = options_.control.repeats;
    return predictedPeakBytes(size);
}

std::string MemoryCheck::budgetText() const {
    if (!budget_) return "how much is free is not known";
    return gibText(*budget_) + (options_.memoryGib ? " are allowed by --memory" : " are free");
}

std::string MemoryCheck::note(std::int64_t voxels) const {
    return "Memory: about " + gibText(predictedBytes(voxels)) + " at the peak, for " + std::to_string(voxels) +
           " voxels; " + budgetText() + ".";
}

void MemoryCheck::requireEnough(std::int64_t voxels) const {
    if (!budget_ || predictedBytes(voxels) <= *budget_) return;
    throw Failure(ExitStatus::kMemory,
                  functional_.file.string() + " needs about " + gibText(predictedBytes(voxels)) + " of memory, but " +
                      budgetText() + "; use a smaller mask or fewer components, or allow more with --memory GIB.");
}

} // namespace zn::headless
