#pragma once

#include "host/run_exit.h"
#include "host/vtc_header.h"
#include "input/file_names.h"

#include <memory>

namespace zn {

/// Sizes of the VTC grid; negative along an axis on which the host's bounding box runs backwards. Voxel (x, y, z), each
/// from 0, has the linear index z * (x size * y size) + y * x size + x.
struct Grid {
    int x = 0;
    int y = 0;
    int z = 0;
    /// Product of the sizes; the largest or smallest long long when it overflows.
    long long voxels() const;
    /// Whether a scan over z, y and x meets any voxel.
    bool canBeScanned() const { return x > 0 && y > 0 && z > 0; }
};

/// The functional time courses linked to the current anatomical volume. The data are the host's memory. The mask is a
/// copy, because it is needed until the maps are filled: while the host asks the user something, it may be replaced.
struct Vtc {
    VtcHeader header{};
    Grid grid;
    const float* floatData = nullptr;         ///< value of voxel i at volume t at i * volumes + t; either these ...
    const short* integerData = nullptr;       ///< ... or these, as the header's data type says
    const unsigned char* mask = nullptr;      ///< one byte per grid voxel, nonzero: selected; null: all are selected
    std::unique_ptr<unsigned char[]> ownMask; ///< what `mask` points to once it is copied
    int voxels = 0;                           ///< number of selected voxels, V

    int volumes() const { return header.volumes; } ///< T
    bool isSelected(long long index) const { return !mask || mask[index] != 0; }
};

/// Links the VTC, loads the mask, reads header and data and counts the selected voxels; shows the busy cursor before
/// the data are fetched. Throws std::bad_alloc when there is no memory for the mask.
///
/// Stops when the VTC cannot be linked, the mask does not fit, there is no VTC, or the number of selected voxels is
/// 0, below the number of volumes or above 5,000,000.
MaybeStop openVtc(const FileNames& names, BusyCursor& cursor, Vtc& vtc);

} // namespace zn
