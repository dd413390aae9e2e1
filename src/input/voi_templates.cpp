#include "input/voi_templates.h"

#include "host/host_api.h"
#include "host/log.h"
#include "numeric/nrerror.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

namespace zn {

namespace {

constexpr long long kCentre = 128; // anatomical voxel in the middle of the host's centred space

// Anatomical voxel coordinates of a VOI voxel; in 64 bits, so that no 32-bit coordinate overflows the difference.
std::array<long long, 3> anatomicalPosition(const int* c, int coordinateSpace) {
    if (coordinateSpace == kCentredSpace) return {kCentre - c[1], kCentre - c[2], kCentre - c[0]};
    return {c[0], c[1], c[2]};
}

// Nearest VTC voxel along one axis; the position is computed in single precision, halves round up, also below zero.
double gridPosition(long long position, int start, int resolution) {
    const float offset = (static_cast<float>(position) - static_cast<float>(start)) / static_cast<float>(resolution);
    return std::floor(static_cast<double>(offset) + 0.5);
}

bool isInside(double position, int size) {
    return position >= 0.0 && position < size;
}

void drawVoi(int voi, int coordinateSpace, const Vtc& vtc, int* indicator) {
    std::fill(indicator, indicator + vtc.grid.voxels(), 0);
    const auto header = std::make_unique<VoiHeader>();
    const int* coordinates = host().znGetVOI(voi, header.get());
    if (!coordinates) return;
    for (int i = 0; i < header->voxels; ++i) {
        const long long index = voiVoxelToGridIndex(coordinates + 3LL * i, coordinateSpace, vtc.header, vtc.grid);
        if (index >= 0) indicator[index] = 1;
    }
}

} // namespace

long long voiVoxelToGridIndex(const int* c, int coordinateSpace, const VtcHeader& header, const Grid& grid) {
    const auto position = anatomicalPosition(c, coordinateSpace);
    const double x = gridPosition(position[0], header.xStart, header.resolution);
    const double y = gridPosition(position[1], header.yStart, header.resolution);
    const double z = gridPosition(position[2], header.zStart, header.resolution);
    if (!isInside(x, grid.x) || !isInside(y, grid.y) || !isInside(z, grid.z)) return -1;
    const long long plane = static_cast<long long>(grid.x) * grid.y;
    return static_cast<long long>(z) * plane + static_cast<long long>(y) * grid.x + static_cast<long long>(x);
}

VoiTemplates VoiTemplates::fetch(bool loaded, const Vtc& vtc) {
    VoiTemplates templates;
    const auto set = std::make_unique<VoiSetHeader>();
    if (!loaded || host().znGetVOIs(set.get()) == 0) {
        host().znLogText("// Plugin>  No VOI definition currently available (for spatial template)");
        return templates;
    }
    logLine("// Plugin>  Number of VOIs currently defined (for spatial template): %i", set->count);
    if (set->count < 1) return templates;

    if (vtc.grid.voxels() > std::numeric_limits<int>::max()) nrerror("allocation failure 2 in matrix()");
    templates.count_ = set->count;
    templates.indicators_ = OffsetMatrix<int>(0, set->count - 1, 0, static_cast<int>(vtc.grid.voxels()) - 1);
    templates.templates_ = OffsetMatrix<float>(0, set->count - 1, 0, vtc.voxels - 1);
    if (!vtc.grid.canBeScanned()) templates.templates_.fill(0.0f); // no scan will set them
    for (int j = 0; j < set->count; ++j) drawVoi(j, set->coordinateSpace, vtc, templates.indicators_[j]);
    return templates;
}

void VoiTemplates::take(long long gridIndex, int row) {
    for (int j = 0; j < count_; ++j) templates_[j][row] = indicators_[j][gridIndex] > 0 ? 1.0f : 0.0f;
}

} // namespace zn
