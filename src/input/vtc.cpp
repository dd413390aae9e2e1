#include "input/vtc.h"

#include "host/host_api.h"
#include "host/log.h"

#include <algorithm>
#include <limits>

namespace zn {

namespace {

constexpr int kMostVoxels = 5'000'000;

constexpr char kWrongMaskBox[] = "This mask does not fit the current VTC resolution or bounding box!\n"
                                 "Please keep the VTC linked to the current VMR or SRF before creating a VTC mask.";
constexpr char kWrongMaskLog[] = "// Plugin> Wrong mask provided. Exiting plugin.";

int limitedToInt(long long number) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

MaybeStop loadMask(const FileNames& names, BusyCursor& cursor, Vtc& vtc) {
    if (isEmpty(names.mask)) return std::nullopt;
    if (host().znLoadMaskToCurrentVMR(names.mask.data()) != 0) vtc.mask = host().znGetMaskOfCurrentVMR();
    if (!vtc.mask) return stopWithMessage(cursor, kWrongMaskBox, kWrongMaskLog, false);
    return std::nullopt;
}

Stop stopWithoutVtc(BusyCursor& cursor) {
    cursor.stopIfShown();
    host().znLogText("// Plugin>  Could not get VTC!");
    return Stop{false};
}

// A header that describes no usable data, or data that the host does not hand out, counts as no VTC.
MaybeStop fetchData(BusyCursor& cursor, Vtc& vtc) {
    host().znGetHeaderOfVTCOfCurrentVMR(&vtc.header);
    std::end(vtc.header.name)[-1] = '\0';
    if (vtc.header.validity == kNoVtc || vtc.volumes() < 1) return stopWithoutVtc(cursor);

    cursor.show();
    if (vtc.header.dataType == kFloatData) {
        vtc.floatData = host().znGetVTCFloatDataOfCurrentVMR();
    } else {
        vtc.integerData = host().znGetVTCIntDataOfCurrentVMR();
    }
    if (!vtc.floatData && !vtc.integerData) return stopWithoutVtc(cursor);
    return std::nullopt;
}

// Number of whole VTC voxels along one axis of the bounding box; a remainder is dropped. Negative for an axis that runs
// backwards.
int gridSize(int start, int end, int resolution) {
    if (resolution < 1) return 0;
    return limitedToInt((static_cast<long long>(end) - start) / resolution);
}

Grid gridOf(const VtcHeader& h) {
    return {gridSize(h.xStart, h.xEnd, h.resolution), gridSize(h.yStart, h.yEnd, h.resolution),
            gridSize(h.zStart, h.zEnd, h.resolution)};
}

void copyMask(Vtc& vtc) {
    if (!vtc.mask || !vtc.grid.canBeScanned()) return;
    const auto voxels = static_cast<std::size_t>(vtc.grid.voxels());
    vtc.ownMask.reset(new unsigned char[voxels]);
    std::copy_n(vtc.mask, voxels, vtc.ownMask.get());
    vtc.mask = vtc.ownMask.get();
}

// Without a mask, the product of the three sizes; with one, what the scan of the grid finds, which is nothing when an
// axis runs backwards.
int countSelectedVoxels(const Vtc& vtc) {
    const long long voxels = vtc.grid.voxels();
    if (!vtc.mask) return limitedToInt(voxels);
    if (!vtc.grid.canBeScanned()) return 0;
    return limitedToInt(std::count_if(vtc.mask, vtc.mask + voxels, [](unsigned char byte) { return byte != 0; }));
}

MaybeStop checkVoxelCount(const Vtc& vtc, BusyCursor& cursor) {
    if (vtc.voxels == 0) {
        return stopWithMessage(cursor, "No voxels selected in the current VTC!",
                               "// Plugin> No voxels selected in the current VTC!", false);
    }
    if (vtc.voxels < vtc.volumes()) {
        return stopWithMessage(
            cursor, "Too few voxels (less than number of time points) selected in the current VTC!",
            "// Plugin> Too few voxels (less than number of time points) selected in the current VTC!", false);
    }
    if (vtc.voxels > kMostVoxels) {
        return stopWithMessage(cursor, "Too many voxels selected in the current VTC!",
                               "// Plugin> Too many voxels selected in the current VTC. Exiting plugin.", false);
    }
    return std::nullopt;
}

} // namespace

long long Grid::voxels() const {
    using Limits = std::numeric_limits<long long>;
    long long product = 0;
    if (!__builtin_mul_overflow(static_cast<long long>(x) * y, static_cast<long long>(z), &product)) return product;
    return (x < 0) ^ (y < 0) ^ (z < 0) ? Limits::min() : Limits::max();
}

MaybeStop openVtc(const FileNames& names, BusyCursor& cursor, Vtc& vtc) {
    if (host().znLinkVTCToCurrentVMR(names.vtc.data(), 1) == 0) return stopWithMemoryFull(cursor);
    if (auto stop = loadMask(names, cursor, vtc)) return stop;
    if (auto stop = fetchData(cursor, vtc)) return stop;

    vtc.grid = gridOf(vtc.header);
    copyMask(vtc);
    vtc.voxels = countSelectedVoxels(vtc);
    logLine("// Plugin>  Number of used VTC voxels: %i", vtc.voxels);
    return checkVoxelCount(vtc, cursor);
}

} // namespace zn
