#include "headless/group/steps/memory_need.h"

#include "headless/failure/failure.h"
#include "headless/memory/available_memory.h"
#include "headless/text/byte_sizes.h"

#include <algorithm>
#include <string>

namespace zn::headless {

namespace {

std::int64_t longestRun(const GroupStudy& study) {
    int longest = 0;
    for (const GroupRun& run : study.runs) longest = std::max(longest, run.volumes);
    return longest;
}

} // namespace

std::int64_t preparationBytes(const GroupStudy& study) {
    const std::int64_t volumes = study.preparation.smoothMm > 0.0 ? 128 * study.grid.voxels() : 64 * study.voxels();
    return 4 * study.voxels() * longestRun(study) + volumes + 12 * study.grid.voxels();
}

std::int64_t reductionBytes(const GroupStudy& study, int threads) {
    const std::int64_t order = study.rows() + longestRun(study);
    const std::int64_t blocks = 32768 * order;
    return 4 * study.voxels() * study.rows() + 8 * order * order * (threads + 1) + blocks * threads;
}

std::int64_t dualRegressionBytes(const GroupStudy& study, int components) {
    return 12 * study.voxels() * components;
}

void requireFreeMemory(const char* what, std::int64_t bytes) {
    const auto available = usableMemoryBytes();
    if (!available || bytes <= *available) return;
    throw Failure(ExitStatus::kMemory, std::string(what) + " needs about " + gibText(bytes) + ", but " +
                                           gibText(*available) +
                                           " are free; run this step where there is more memory, or use a smaller "
                                           "mask.");
}

} // namespace zn::headless
