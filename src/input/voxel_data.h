#pragma once

#include "input/voi_templates.h"
#include "input/vtc.h"
#include "numeric/array_owners.h"

namespace zn {

/// The selected voxels in the order of the grid walk: z outermost, then y, x innermost. V voxels, T volumes.
struct VoxelData {
    OffsetMatrix<float> timeCourses; ///< [0..V-1][0..T-1], the data matrix X
    OffsetMatrix<int> coordinates;   ///< [0..V-1][0..2], grid x, y, z from 0
    OffsetMatrix<int> list;          ///< [1..V+1][1..3], V in [1][1], then grid x, y, z from 1: the rows of "ICA.vox"
};

/// Copies the selected voxels' time courses from the VTC, converting 16-bit values exactly, and has the templates take
/// each voxel's column.
VoxelData extractVoxels(const Vtc& vtc, VoiTemplates& templates);

/// Data matrix in double precision with the spatial mean removed: from each volume the mean over all selected voxels.
///
///   timeCourses   in: [0..V-1][0..T-1]; out: released as soon as it is copied
///   result        V x T, row-major
///
/// Throws std::bad_alloc when there is no memory for the copy.
ZeroedBlock removeSpatialMean(OffsetMatrix<float>& timeCourses, int voxels, int volumes);

} // namespace zn
