#include "headless/denoise/voxel_kinds.h"

#include "headless/denoise/voxel_units.h"

#include <cmath>

namespace zn::headless {

namespace {

VoxelKind kindOf(const float* course, int volumes, bool inMask) {
    double sum = 0.0; // of single-precision values: finite if and only if they all are
    bool varies = false;
    for (int t = 0; t < volumes; ++t) {
        sum += static_cast<double>(course[t]);
        varies |= course[t] != course[0];
    }
    if (!std::isfinite(sum)) return VoxelKind::kNotFinite;
    if (!varies) return VoxelKind::kConstant;
    return inMask ? VoxelKind::kInMask : VoxelKind::kOutside;
}

} // namespace

std::vector<VoxelKind> voxelKinds(const AnalysedCourses& courses, const std::vector<unsigned char>& mask,
                                  WorkerThreads& threads) {
    std::vector<VoxelKind> kinds(static_cast<std::size_t>(courses.voxels));
    forEachUnit(threads, courses.voxels, [&](int, int, std::int64_t first, std::int64_t end) {
        for (std::int64_t v = first; v < end; ++v) {
            const auto voxel = static_cast<std::size_t>(v);
            kinds[voxel] = kindOf(courses.course(v), courses.volumes(), mask[voxel] != 0);
        }
    });
    return kinds;
}

} // namespace zn::headless
